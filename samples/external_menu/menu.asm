; A menu of one's own for a multicart, to start from. It shows ten names a page; up and down choose,
; left and right turn pages, START plays. docs/external_menus.md explains the generated files.
;
;   bankweaver-cli build --extern-menu menu.asm -o cart.nes GAMES
;
; From top to bottom: constants, memory, tables, start-up, main loop, screen, pads, start of a game.
; The program waits for the picture's pause (vertical blank) by asking for it; it uses no interrupt.
; 16-bit values lie low byte first in a pair NAME_L, NAME_H.

    INCLUDE "build/game_config.asm"

; ---- Console (NESdev wiki: PPU registers, APU, controller reading, MMC3) --------------------------

PPU_CTRL        = $2000
PPU_MASK        = $2001
PPU_STATUS      = $2002
PPU_SCROLL      = $2005
PPU_ADDRESS     = $2006
PPU_DATA        = $2007
APU_STATUS      = $4015
JOY1            = $4016
JOY2_FRAME      = $4017
MMC3_SELECT     = $8000         ; which bank register: 0 to 5 tiles, 6 $8000, 7 $A000
MMC3_BANK       = $8001
MMC3_MIRRORING  = $A000         ; 0 vertical, 1 horizontal
MMC3_RAM        = $A001         ; $80 work RAM on, 0 off
MMC3_IRQ_OFF    = $E000

BTN_START       = $10
BTN_UP          = $08
BTN_DOWN        = $04
BTN_LEFT        = $02
BTN_RIGHT       = $01

; ---- The board -----------------------------------------------------------------------------------

COOLGIRL        = 2             ; BOARD_TYPE; any other is COOLBOY, for MINDKIDS too: see FindBoard
    .IF BOARD_TYPE = COOLGIRL
REGISTERS       = 8             ; the board's outer registers
CHR_REGISTERS   = 6             ; of them, those that bring a game's tiles into view
    .ELSE
REGISTERS       = 4
CHR_REGISTERS   = 4
    .ENDIF

; ---- Banks of 8 KB -------------------------------------------------------------------------------
; The menu has 128 KB on every board: 16 banks, seen by these numbers once WriteMenuRegisters has
; run. Names and records are read at $A000; the last two banks are always at $C000 and $E000.

NAME_BANK       = 0
RECORD_BANK     = NAME_BANK + NAME_BANK_COUNT
TILE_BANK       = RECORD_BANK + FINAL_DATA_BANK_COUNT
INDEX_BANK      = 14
PROGRAM_BANK    = 15

; ---- Look ----------------------------------------------------------------------------------------

ROWS            = 10            ; names on a page, every second row of the screen
WIDTH           = 28            ; characters of a name that fit
MARK_ADDR       = $20C2         ; row 6, column 2
NAME_ADDR       = $20C3
LAST_PAGE       = (GAMES_TOTAL - 1) / ROWS * ROWS   ; its first game

; ---- RAM -----------------------------------------------------------------------------------------

    .RSSET $00
Board_L         .RS 1           ; where the board's registers are
Board_H         .RS 1
Page_L          .RS 1           ; first game of the page
Page_H          .RS 1
Page_Rows       .RS 1           ; games on it
Row             .RS 1           ; the chosen one of them
Redraw          .RS 1           ; not 0: the page has changed
Buttons         .RS 1
Pressed         .RS 1           ; the buttons that went down
Item_L          .RS 1
Item_H          .RS 1
Pointer_L       .RS 1
Pointer_H       .RS 1
Count           .RS 1
Line            .RS 1
Source_Bank     .RS 1           ; where a game's tiles begin
Source_H        .RS 1
Chr_Count       .RS 1           ; how many 8 KB of them there are
Chr_Regs        .RS CHR_REGISTERS
Game_Regs       .RS REGISTERS

LAUNCH_ADDR     = $0100         ; Launch runs here, below what is in use of the stack

    .INESPRG 8
    .INESCHR 0
    .INESMAP 4
    .INESMIR 0

    INCLUDE "tables.asm"        ; the generated tables and tiles, in their banks

; ---- Indexes: a byte per game tells the bank of its name, and of its record ----------------------

    .BANK INDEX_BANK
    .ORG $C000
Name_Index:
    INCLUDE "build/game_list_bank.asm"
Record_Index:
    INCLUDE "build/game_final_data_bank.asm"

; ---- Start-up ------------------------------------------------------------------------------------

    .BANK PROGRAM_BANK
    .ORG $E000

Reset:
    SEI
    CLD
    LDX #$FF
    TXS
    LDA #0
    STA PPU_CTRL                ; no NMI
    STA PPU_MASK                ; no picture
    STA APU_STATUS              ; no sound
    STA MMC3_IRQ_OFF
    STA MMC3_RAM                ; on COOLBOY the registers lie in its place
    LDA #$40
    STA JOY2_FRAME              ; no interrupt from the sound unit
    JSR FindBoard
    LDA #1
    STA MMC3_MIRRORING
    LDX #5                      ; the 8 KB of tile RAM in their order
.Tiles:
    STX MMC3_SELECT
    LDA TileBanks,X
    STA MMC3_BANK
    DEX
    BPL .Tiles
    JSR WaitBlank               ; the PPU takes two frames to wake up
    JSR WaitBlank
    JSR InitScreen
    LDA #0
    STA <Page_L
    STA <Page_H
    STA <Row
    STA <Buttons
    LDA #1
    STA <Redraw

; ---- Main loop: once per frame -------------------------------------------------------------------

Main:
    LDA <Redraw
    BEQ .Drawn
    JSR DrawPage
.Drawn:
    JSR WaitBlank
    JSR ShowCursor
    JSR ReadPad
    LDA <Pressed
    AND #BTN_UP
    BEQ .NotUp
    JSR MoveUp
.NotUp:
    LDA <Pressed
    AND #BTN_DOWN
    BEQ .NotDown
    JSR MoveDown
.NotDown:
    LDA <Pressed
    AND #BTN_LEFT
    BEQ .NotLeft
    JSR PageBack
.NotLeft:
    LDA <Pressed
    AND #BTN_RIGHT
    BEQ .NotRight
    JSR PageOn
.NotRight:
    LDA <Pressed
    AND #BTN_START
    BEQ Main
    JMP StartGame

; MoveUp, MoveDown: one name up or down; over the edge of a page to the next one.
MoveUp:
    DEC <Row
    BPL .Return
    LDA #ROWS - 1               ; DrawPage brings it back to a row that there is
    STA <Row
    JMP PageBack
.Return:
    RTS

MoveDown:
    INC <Row
    LDA <Row
    CMP <Page_Rows
    BCC .Return
    LDA #0
    STA <Row
    JMP PageOn
.Return:
    RTS

; PageBack, PageOn: the page before and behind; from the first to the last and from that to the first.
PageBack:
    LDA #1
    STA <Redraw
    LDA <Page_L
    ORA <Page_H
    BNE .Back
    LDA #LOW(LAST_PAGE)
    STA <Page_L
    LDA #HIGH(LAST_PAGE)
    STA <Page_H
    RTS
.Back:
    SEC
    LDA <Page_L
    SBC #ROWS
    STA <Page_L
    BCS .Return
    DEC <Page_H
.Return:
    RTS

PageOn:
    LDA #1
    STA <Redraw
    CLC
    LDA <Page_L
    ADC #ROWS
    STA <Page_L
    BCC .Compare
    INC <Page_H
.Compare:
    LDA <Page_L
    CMP #LOW(GAMES_TOTAL)
    LDA <Page_H
    SBC #HIGH(GAMES_TOTAL)
    BCC .Return
    LDA #0
    STA <Page_L
    STA <Page_H
.Return:
    RTS

; ---- Screen --------------------------------------------------------------------------------------

; WaitBlank: waits for the beginning of the next vertical blank.
WaitBlank:
    BIT PPU_STATUS
.Wait:
    BIT PPU_STATUS
    BPL .Wait
    RTS

; InitScreen: tiles, empty name table, colours, the two lines that never change. The picture is off.
InitScreen:
    LDA #TILE_BANK
    JSR SelectBank
    LDA #$A0
    STA <Pointer_H
    LDY #0
    STY <Pointer_L
    STY PPU_ADDRESS
    STY PPU_ADDRESS
    LDX #$20                    ; pages of 256 bytes
.Tile:
    LDA [Pointer_L],Y
    STA PPU_DATA
    INY
    BNE .Tile
    INC <Pointer_H
    DEX
    BNE .Tile

    LDA #$20
    STA PPU_ADDRESS
    STY PPU_ADDRESS             ; Y is 0
    LDX #4
    LDA Char_Map + ' '
.Blank:
    STA PPU_DATA
    INY
    BNE .Blank
    DEX
    BNE .Blank

    LDA #$3F
    STA PPU_ADDRESS
    STX PPU_ADDRESS             ; X is 0
.Colour:
    LDA Palette,X
    STA PPU_DATA
    INX
    CPX #16
    BNE .Colour

    LDA #$20                    ; row 3, column 3
    LDX #$63
    JSR SetAddress
    LDX #LOW(Title)
    LDY #HIGH(Title)
    JSR DrawText
    LDA #$23                    ; row 27, column 3
    LDX #$63
    JSR SetAddress
    LDX #LOW(Help)
    LDY #HIGH(Help)
    ; falls through

; DrawText: writes the counted text at X (low), Y (high) to where the PPU stands.
DrawText:
    STX <Pointer_L
    STY <Pointer_H
    LDY #0
    LDA [Pointer_L],Y
    STA <Count
    BEQ .Return
.Next:
    INY
    LDA [Pointer_L],Y
    TAX
    LDA Char_Map,X
    STA PPU_DATA
    CPY <Count
    BNE .Next
.Return:
    RTS

; SetAddress: sets the PPU's address to A (high), X (low).
SetAddress:
    BIT PPU_STATUS              ; the next write is the high byte
    STA PPU_ADDRESS
    STX PPU_ADDRESS
    RTS

; DrawPage: writes the names of the page, with the picture off until the next ShowCursor.
DrawPage:
    JSR WaitBlank
    LDA #0
    STA PPU_MASK
    STA PPU_CTRL
    STA <Redraw
    STA <Line
    SEC                         ; games left from this page on: are there ROWS?
    LDA #LOW(GAMES_TOTAL)
    SBC <Page_L
    TAX
    LDA #HIGH(GAMES_TOTAL)
    SBC <Page_H
    BNE .Full
    CPX #ROWS
    BCC .Rows
.Full:
    LDX #ROWS
.Rows:
    STX <Page_Rows
    DEX
    CPX <Row
    BCS .Line
    STX <Row
.Line:
    LDX <Line
    LDA Row_Address_H,X
    PHA
    LDA Row_Address_L,X
    TAX
    PLA
    JSR SetAddress
    LDA #0
    STA <Count
    LDA <Line
    CMP <Page_Rows
    BCS .Wipe                   ; nothing but blanks
    LDX #LOW(Name_Index)
    LDY #HIGH(Name_Index)
    LDA #NAME_BANK
    JSR FindEntry
    LDA [Pointer_L],Y           ; Y is 0
    CMP #WIDTH + 1              ; the first name of a bank is not cut to any screen
    BCC .Length
    LDA #WIDTH
.Length:
    STA <Count
.Wipe:
    LDY #0
.Next:
    LDA #' '
    CPY <Count
    BCS .Put
    INY
    LDA [Pointer_L],Y
    DEY
.Put:
    TAX
    LDA Char_Map,X
    STA PPU_DATA
    INY
    CPY #WIDTH
    BNE .Next
    INC <Line
    LDA <Line
    CMP #ROWS
    BNE .Line
    RTS

; ShowCursor: marks the chosen row: an arrow before it, and other colours. Writes all of both, so
; there is nothing to remember, and turns the picture on. Must begin with the vertical blank.
ShowCursor:
    LDA #%00000100              ; the PPU goes down the column of the arrows
    STA PPU_CTRL
    LDA #HIGH(MARK_ADDR)
    LDX #LOW(MARK_ADDR)
    JSR SetAddress
    LDX #0
.Mark:
    LDA Char_Map + ' '
    CPX <Row
    BNE .Put
    LDA Char_Map + '>'
.Put:
    STA PPU_DATA
    LDA Char_Map + ' '          ; the row between two names
    STA PPU_DATA
    INX
    CPX #ROWS
    BNE .Mark

    LDA #0                      ; the PPU goes to the right
    STA PPU_CTRL
    LDA #$23
    LDX #$C0
    JSR SetAddress
    LDX #0
.Block:                         ; a byte of colours is 4 rows high and 4 columns wide
    LDA Block_Colours,X
    LDY <Row
    PHA
    TXA
    CMP Row_Block,Y
    BNE .Other
    PLA
    EOR Row_Half,Y              ; palette 1 becomes 2 in one half
    PHA
.Other:
    PLA
    LDY #8
.Colour:
    STA PPU_DATA
    DEY
    BNE .Colour
    INX
    CPX #8
    BNE .Block

    LDA #0
    STA PPU_SCROLL
    STA PPU_SCROLL
    STA PPU_CTRL
    LDA #%00001010              ; background only
    STA PPU_MASK
    RTS

; ---- Tables --------------------------------------------------------------------------------------

; FindEntry: finds the entry of row Line of this page in the names or the records. Each bank begins
; with the number of its first game; the addresses of its entries follow.
; Takes the index in X (low), Y (high) and the first bank in A. Gives the entry in Pointer with its
; bank at $A000, and 0 in Y.
FindEntry:
    STA <Count
    STX <Pointer_L
    STY <Pointer_H
    CLC
    LDA <Page_L
    ADC <Line
    STA <Item_L
    LDA <Page_H
    ADC #0
    STA <Item_H
    CLC
    LDA <Pointer_L
    ADC <Item_L
    STA <Pointer_L
    LDA <Pointer_H
    ADC <Item_H
    STA <Pointer_H
    LDY #0
    CLC
    LDA [Pointer_L],Y
    ADC <Count
    JSR SelectBank
    SEC                         ; which entry of the bank
    LDA <Item_L
    SBC $A000
    STA <Item_L
    LDA <Item_H
    SBC $A001
    STA <Item_H
    ASL <Item_L                 ; an address has two bytes
    ROL <Item_H
    CLC
    LDA <Item_L
    ADC #LOW($A002)
    STA <Pointer_L
    LDA <Item_H
    ADC #HIGH($A002)
    STA <Pointer_H
    LDA [Pointer_L],Y
    TAX
    INY
    LDA [Pointer_L],Y
    STX <Pointer_L
    STA <Pointer_H
    DEY
    RTS

; SelectBank: shows bank A at $A000.
SelectBank:
    PHA
    LDA #7
    STA MMC3_SELECT
    PLA
    STA MMC3_BANK
    RTS

; ---- Pads ----------------------------------------------------------------------------------------

; ReadPad: reads the first pad. Right comes last and ends in bit 0.
ReadPad:
    LDX #1
    STX JOY1
    DEX
    STX JOY1
    LDY <Buttons
    LDX #8
.Button:
    LDA JOY1
    AND #%00000011              ; bit 1: a pad in the expansion port
    CMP #1                      ; carry if either is set
    ROL <Buttons
    DEX
    BNE .Button
    TYA
    EOR #$FF
    AND <Buttons
    STA <Pressed
    RTS

; ---- Board ---------------------------------------------------------------------------------------

; FindBoard: confines the processor to the menu's 128 KB, and finds out where the registers are. The
; tables call MINDKIDS a COOLBOY, but its registers are at $5000. So those are tried first: if they
; worked, the menu's 16 banks repeat, and bank $2F is the last one again. On a COOLBOY it is still
; some game's.
FindBoard:
    LDA #$50
    JSR WriteMenuRegisters
    .IF BOARD_TYPE = COOLGIRL
    RTS
    .ELSE
    LDA #$2F
    JSR SelectBank
    LDX #15
.Compare:
    LDA $A000,X
    CMP $E000,X
    BNE .Coolboy
    DEX
    BPL .Compare
    RTS
.Coolboy:
    LDA #$60
    ; falls through
    .ENDIF

; WriteMenuRegisters: writes what shows the menu to the board's registers, whose page is in A.
WriteMenuRegisters:
    STA <Board_H
    LDY #0
    STY <Board_L
.Next:
    LDA Menu_Registers,Y
    STA [Board_L],Y
    INY
    CPY #REGISTERS
    BNE .Next
    RTS

; StartGame: starts the chosen game. Never returns.
StartGame:
    JSR WaitBlank
    LDA #0
    STA PPU_MASK
    STA PPU_ADDRESS             ; a game likes an empty screen: zeros from $0000 to $2FFF, tiles
    STA PPU_ADDRESS             ; and, as long as the menu's mirroring holds, both name tables
    TAX
    LDY #$30
.Picture:
    STA PPU_DATA
    INX
    BNE .Picture
    DEY
    BNE .Picture
    LDA <Row
    STA <Line
    LDX #LOW(Record_Index)
    LDY #HIGH(Record_Index)
    LDA #RECORD_BANK
    JSR FindEntry

    .IF BOARD_TYPE = COOLGIRL
    LDA [Pointer_L],Y           ; where the tiles are, in 8 KB; the registers count in 16
    STA <Chr_Regs + 1
    AND #1
    STA <Source_Bank
    INY
    LDA [Pointer_L],Y
    LSR A
    STA <Chr_Regs
    ROR <Chr_Regs + 1
    INY
    LDA [Pointer_L],Y
    STA <Chr_Count
    INY                         ; the flags: all of them are in the registers
    LDA #0
    STA <Chr_Regs + 2
    STA <Chr_Regs + 3
    STA <Chr_Regs + 4
    STA <Chr_Regs + 5
    LDX #0
.Register:
    INY
    LDA [Pointer_L],Y
    STA <Game_Regs,X
    INX
    CPX #REGISTERS
    BNE .Register
    LDA #$80
    STA <Source_H
    .ELSE
    LDA [Pointer_L],Y           ; flags: bit 0 vertical mirroring
    AND #1
    EOR #1
    STA MMC3_MIRRORING
    INY
    LDA [Pointer_L],Y
    STA <Chr_Count
    LDX #0                      ; Chr_Regs and Game_Regs follow one another there and here
.Register:
    INY
    LDA [Pointer_L],Y
    STA <Chr_Regs,X
    INX
    CPX #CHR_REGISTERS + REGISTERS
    BNE .Register
    LDA <Chr_Regs + 3
    AND #%00001111
    STA <Source_Bank
    LDA #$80
    STA <Source_H
    LDA <Chr_Regs + 3           ; NROM: 16 KB at once, of which an odd 8 KB are the second half
    AND #%00010001
    CMP #%00010001
    BNE .Half
    LDA #$A0
    STA <Source_H
.Half:
    .ENDIF

    LDA #0                      ; a game likes empty RAM
    TAX
.Clear:
    STA $0200,X
    STA $0300,X
    STA $0400,X
    STA $0500,X
    STA $0600,X
    STA $0700,X
    INX
    BNE .Clear
.Copy:
    LDA Launch,X                ; X is 0
    STA LAUNCH_ADDR,X
    INX
    CPX #LAUNCH_SIZE
    BNE .Copy
    JMP LAUNCH_ADDR

; Launch: runs in RAM, because the registers move the ROM under the processor. Branches only: a JMP
; or JSR to a label in here would go to the ROM.
Launch:
    LDY #0
.Chr:
    LDA Chr_Regs,Y
    STA [Board_L],Y
    INY
    CPY #CHR_REGISTERS
    BNE .Chr

.Bank:                          ; 8 KB at a time from the last to the first, which leaves the banks
    LDA <Chr_Count              ; of tile RAM in order
    BEQ .Copied                 ; at once, if the game makes its own tiles
    DEC <Chr_Count
    LDA #6
    STA MMC3_SELECT
    LDA <Source_Bank
    CLC
    ADC <Chr_Count
    STA MMC3_BANK
    LDA <Chr_Count              ; tile RAM counts in 1 KB; R0 and R1 take two of them
    ASL A
    ASL A
    ASL A
    LDX #0
.Target:
    STX MMC3_SELECT
    STA MMC3_BANK
    CLC
    ADC #1
    CPX #2
    BCS .One
    ADC #1                      ; the carry is clear
.One:
    INX
    CPX #6
    BNE .Target
    LDA <Source_H
    STA <Pointer_H
    BIT PPU_STATUS
    LDY #0
    STY <Pointer_L
    STY PPU_ADDRESS
    STY PPU_ADDRESS
    LDX #$20
.Byte:
    LDA [Pointer_L],Y
    STA PPU_DATA
    INY
    BNE .Byte
    INC <Pointer_H
    DEX
    BNE .Byte
    BEQ .Bank
.Copied:
    LDX #6                      ; PRG banks as a game finds them at power-on: 0 at $8000, 1 at $A000
    STX MMC3_SELECT
    STA MMC3_BANK               ; A is 0
    INX
    STX MMC3_SELECT
    LDX #1
    STX MMC3_BANK
    LDY #0
.Game:
    LDA Game_Regs,Y
    STA [Board_L],Y             ; the last one locks the registers
    INY
    CPY #REGISTERS
    BNE .Game
    .IF BOARD_TYPE != COOLGIRL
    LDA #$80
    STA MMC3_RAM
    .ENDIF
    LDA #0
    TAX
.Zero:
    STA <$00,X
    INX
    BNE .Zero
    JMP [$FFFC]
Launch_End:
LAUNCH_SIZE     = Launch_End - Launch

; ---- Data ----------------------------------------------------------------------------------------

TileBanks:
    .DB 0,2,4,5,6,7

; What confines each board to the 128 KB of the menu: the end of the first 512 KB of the ROM on
; COOLBOY and MINDKIDS, the first 128 KB on COOLGIRL.
Menu_Registers:
    .IF BOARD_TYPE = COOLGIRL
    .DB 0,0,%01111000,0,0,0,%00010100,%00000111
    .ELSE
    .DB %11000011,%10000000,0,0
    .ENDIF

; Night blue; white for title and help, grey names, the chosen one yellow
Palette:
    .DB $01,$30,$30,$30, $01,$10,$10,$10, $01,$28,$28,$28, $01,$30,$30,$30

; Palettes of 4 by 4 tiles, a row of blocks each: names have palette 1
Block_Colours:
    .DB $00,$50,$55,$55,$55,$55,$05,$00
; In which of these blocks a name is, and in which half of it
Row_Block:
    .DB 1,2,2,3,3,4,4,5,5,6
Row_Half:
    .DB $F0,$0F,$F0,$0F,$F0,$0F,$F0,$0F,$F0,$0F

Row_Address_L:
    .DB LOW(NAME_ADDR),LOW(NAME_ADDR + $40),LOW(NAME_ADDR + $80),LOW(NAME_ADDR + $C0)
    .DB LOW(NAME_ADDR + $100),LOW(NAME_ADDR + $140),LOW(NAME_ADDR + $180),LOW(NAME_ADDR + $1C0)
    .DB LOW(NAME_ADDR + $200),LOW(NAME_ADDR + $240)
Row_Address_H:
    .DB HIGH(NAME_ADDR),HIGH(NAME_ADDR + $40),HIGH(NAME_ADDR + $80),HIGH(NAME_ADDR + $C0)
    .DB HIGH(NAME_ADDR + $100),HIGH(NAME_ADDR + $140),HIGH(NAME_ADDR + $180),HIGH(NAME_ADDR + $1C0)
    .DB HIGH(NAME_ADDR + $200),HIGH(NAME_ADDR + $240)

Title:
    INCLUDE "build/game_title.asm"

Help:
    .STR "START: PLAY   < >: PAGE"

; The tile of each character: the design may have moved them
Char_Map:
    INCBIN "build/char_mapping.bin"

Irq:
    RTI

    .ORG $FFFA
    .DW Irq,Reset,Irq
