; Bankweaver's menu: the program that a multicart runs at power-on.
;
; It shows the list of games page by page, moves a cursor with the pads, and on START hands the
; chosen game to the board layer at the end of the program bank. Everything that differs between
; two menus comes from the files in build/ and from conditional assembly; the console decides
; nothing. docs/menu.md shows how the parts fit together.
;
; The processor must never wait for the picture: start-up runs with the screen dark, and from then
; on everything happens inside the NMI, once per frame, while the main loop idles.
;
; Conventions: 16-bit values lie low byte first in a pair NAME_L, NAME_H. Each routine says what it
; takes, what it gives and what it clobbers; a register that isn't named is kept.

    INCLUDE "build/game_config.asm"

; ---------------------------------------------------------------------------------------------
; Constants
; ---------------------------------------------------------------------------------------------

MULTICATR_TYPE_COOLBOY  = 0
MULTICATR_TYPE_MINDKIDS = 1
MULTICATR_TYPE_COOLGIRL = 2

NMI_MODE                = 1     ; the program runs from the NMI: bit 7 of PPU_CTRL
User_Addr               = $40   ; the zero page below belongs to the music drivers

BANK_DATA_MASK          = MENU_PRG_SIZE * 2 - 1
RESET_BANK              = $3F
RESET_ADDR              = $FE00

ITEM_MAX                = GAMES_TOTAL - 1
PAGE_BIG_SIZE           = 5     ; pages per step of A and B
PAGE_MAX                = ITEM_MAX / PAGE_SIZE * PAGE_SIZE
ITEM_BUF_MAX            = PAGE_TURNING_SPEED
    .IF GAMES_TOTAL % PAGE_SIZE != 0
PAGE_MAX_COUNT          = GAMES_TOTAL / PAGE_SIZE + 1
    .ELSE
PAGE_MAX_COUNT          = GAMES_TOTAL / PAGE_SIZE
    .ENDIF

CHAR_MODE_OPEN          = 1     ; every character goes through Char_Mapping_Data
ENTER_TIME_DELAY        = $30   ; frames between START and the game, so that its sound is heard
Gamepad_DELAY_MAX       = 30    ; frames until a held button repeats
Gamepad_DELAY_SPEED     = 5     ; frames between repeats
GAMEPAD_MERGE_FLAG      = $04   ; set in Gamepad_Merge, it keeps the two pads apart

SPRITES_ADDR            = $0400
SPRITES_PAGE            = 4
SELECT_ADDR             = $0500 ; where the routine that starts a game runs
SELECT_CLEAR_ADDR       = $01E0 ; where the routine that clears RAM runs: 32 bytes to the page end
VRAM_PPU_ADDR           = $0000
VRAM_PPU_SIZE           = $2000
NAME_TABLE_PPU_ADDR     = $2000
NAME_TABLE_PPU_SIZE     = $03C0
ATTRIBUTE_PPU_ADDR      = $23C0
PALETTE_PPU_ADDR        = $3F00

MODE_CNTL               = $FB   ; a record with its tiles
MODE_CNTC               = $FC   ; a record of so many zeros
MODE_OVER               = $FF
MIRRORING               = $01   ; horizontal: the two name tables lie one above the other

; What the NMI can send in one frame, end mark included. A name counts at most as many characters
; as a record that wipes it and a record that writes it can both hold in an empty buffer; longer
; names may open a bank of the tables, where nothing cuts them to the screen.
PPU_BUFFER_SIZE         = $C0
RECORD_HEAD             = 4
NAME_LENGTH_MAX         = (PPU_BUFFER_SIZE - RECORD_HEAD * 2 - 1) / 2
SCREEN_COLUMNS          = 32

BTN_A                   = $80
BTN_B                   = $40
BTN_SELECT              = $20
BTN_START               = $10
BTN_UP                  = $08
BTN_DOWN                = $04
BTN_LEFT                = $02
BTN_RIGHT               = $01

; Console registers (NESdev wiki: PPU registers, APU, MMC3)
PPU_CTRL                = $2000
PPU_MASK                = $2001
PPU_STATUS              = $2002
PPU_OAM_ADDR            = $2003
PPU_OAM_DATA            = $2004
PPU_SCROLL              = $2005
PPU_ADDRESS             = $2006
PPU_DATA                = $2007
APU_PULSE_1             = $4000
APU_PULSE_2             = $4004
OAM_DMA                 = $4014
APU_STATUS              = $4015
JOY1_FRAME              = $4016
JOY2_FRAME              = $4017

MMC3_BANK_CTRL          = $8000
MMC3_BANK_DATA          = $8001
MMC3_MIRRORING          = $A000
MMC3_PRG_RAM_PROTECT    = $A001
MMC3_IRQ_LATCH          = $C000
MMC3_IRQ_RELOAD         = $C001
MMC3_IRQ_DISABLE        = $E000
MMC3_IRQ_ENABLE         = $E001

; The board's outer registers
    .IF BOARD_TYPE = MULTICATR_TYPE_COOLBOY
GAME_REG_0              = $6000
    .ELSE
GAME_REG_0              = $5000
    .ENDIF
GAME_REG_1              = GAME_REG_0 + 1
GAME_REG_2              = GAME_REG_0 + 2
GAME_REG_3              = GAME_REG_0 + 3
GAME_REG_4              = GAME_REG_0 + 4
GAME_REG_5              = GAME_REG_0 + 5
GAME_REG_6              = GAME_REG_0 + 6
GAME_REG_7              = GAME_REG_0 + 7

; ---------------------------------------------------------------------------------------------
; Bank map: numbers of 8 KB banks, written as if the menu had 64 of them, so that the top of the
; map is the same for every size. The board drops the high bits just as BANK_DATA_MASK does.
; ---------------------------------------------------------------------------------------------

    .IF MENU_PRG_SIZE = 8       ; 128 KB: 4 banks of records, 5 of names
SOUND_DATA_BANK_0       = $30
SOUND_DATA_BANK_1       = $31
SOUND_DATA_BANK_2       = $32
GAME_DATA_BANK          = $33
GAME_NAME_BANK          = $37
    .ENDIF
    .IF MENU_PRG_SIZE = 16      ; 256 KB: 8 banks of records, 10 of names
SOUND_DATA_BANK_0       = $20
SOUND_DATA_BANK_1       = $21
SOUND_DATA_BANK_2       = $22
GAME_DATA_BANK          = $23
GAME_NAME_BANK          = $2B
    .ENDIF
    .IF MENU_PRG_SIZE = 32      ; 512 KB: 12 banks of records, 16 of names
SOUND_DATA_BANK_0       = $00
SOUND_DATA_BANK_1       = $01
SOUND_DATA_BANK_2       = $02
GAME_DATA_BANK          = $03
GAME_NAME_BANK          = $18
    .ENDIF
CHR_DATA_BANK           = $3C
PROGRAM_BANK            = $3D
SOUND_DATA_BANK_C000    = $3E   ; always at $C000
GAME_DATA_INDEX         = $3F   ; these four and the code at RESET_ADDR share the last bank, which
GAME_NAME_INDEX         = $3F   ; is always at $E000 and is mapped at $A000 too for its tables
NAME_TABLE_DATA_BANK    = $3F
SPRITE_TILE_BANK        = $3F

GAME_DATA_ADDR          = $A000
GAME_NAME_ADDR          = $A000
CHR_DATA_ADDR           = $A000
PROGRAM_ADDR            = $8800
GAME_DATA_INDEX_ADDR    = $A000 ; 2 KB, one byte per game
GAME_NAME_INDEX_ADDR    = $A800 ; 2 KB, one byte per game
NAME_TABLE_DATA_ADDR    = $B000 ; 1 KB
SPRITE_TILE_ADDR        = $B400

; ---------------------------------------------------------------------------------------------
; Music sets. The song numbers count from 1.
; ---------------------------------------------------------------------------------------------

    .IF MENU_MUSIC = 2
Sound_Init_Src          = $C400
Sound_Play_Src          = $8000
SOUNG_BGM               = 15
SOUNG_ITEM              = 38
SOUNG_PAGE              = 37
SOUNG_ENTER             = 36
    .ENDIF
    .IF MENU_MUSIC = 3
Sound_Init_Src          = $C400
Sound_Play_Src          = $8001
SOUNG_BGM               = 1
SOUNG_ITEM              = 16
SOUNG_PAGE              = 14
SOUNG_ENTER             = 19
    .ENDIF
    .IF MENU_MUSIC = 4
Sound_Init_Src          = $C450
Sound_Play_Src          = $80D5
SOUNG_BGM               = 1
SOUNG_ITEM              = 21
SOUNG_PAGE              = 26
SOUNG_ENTER             = 39
    .ENDIF
    .IF MENU_MUSIC = 5
Sound_Init_Src          = $DFF0
Sound_Play_Src          = $813C
SOUNG_BGM               = 7
SOUNG_ITEM              = 17
SOUNG_PAGE              = 19
SOUNG_ENTER             = 36
    .ENDIF

; ---------------------------------------------------------------------------------------------
; Screen: PPU addresses of the first name, the title and the page number. A page size without a
; place in the chosen style leaves ITEM_SHOW_POS undefined, and the assembler says so.
; ---------------------------------------------------------------------------------------------

    .IF CUSTOM_MENU_ENABLE
    INCLUDE "build/game_item_addr.asm"
    INCLUDE "build/game_caption_addr.asm"
    INCLUDE "build/game_page_number_addr.asm"
    .ELSE
    .IF MENU_SHOW_STYLE = 0
Char_Arrow              = $1F
PAGE_INDER_SHOW_POS     = $234E
    .IF GAMES_TOTAL > 999
TITLE_SHOW_POS          = $206B
    .ELSE
    .IF GAMES_TOTAL > 9
TITLE_SHOW_POS          = $206C
    .ELSE
TITLE_SHOW_POS          = $206D
    .ENDIF
    .ENDIF
    .IF PAGE_SIZE = 5
ITEM_SHOW_POS           = $20C6
    .ENDIF
    .IF PAGE_SIZE = 10
ITEM_SHOW_POS           = $20C6
    .ENDIF
    .IF PAGE_SIZE = 15
ITEM_SHOW_POS           = $20A6
    .ENDIF
    .IF PAGE_SIZE = 20
ITEM_SHOW_POS           = $20A6
    .ENDIF
    .ELSE
Char_Arrow              = $1A
PAGE_INDER_SHOW_POS     = $236E
TITLE_SHOW_POS          = $2064
    .IF PAGE_SIZE = 10
ITEM_SHOW_POS           = $20C6
    .ENDIF
    .IF PAGE_SIZE = 20
ITEM_SHOW_POS           = $20C6
    .ENDIF
    .ENDIF
    .ENDIF

; The default look's cursor stands one column before the names. The picture shows a sprite one
; line below its Y byte, hence the - 1.
ARROW_X_OFFSET          = (((ITEM_SHOW_POS & $1F) - 1) << 3) - 2
ARROW_Y_OFFSET          = (((ITEM_SHOW_POS & $03FF) >> 5) << 3) - 1

; The page number has as many digits as the number of pages. The default look centres it.
    .IF PAGE_MAX_COUNT >= 100
PAGE_DIGITS             = 3
    .ELSE
    .IF PAGE_MAX_COUNT >= 10
PAGE_DIGITS             = 2
    .ELSE
PAGE_DIGITS             = 1
    .ENDIF
    .ENDIF
    .IF CUSTOM_MENU_ENABLE
PAGE_INDER_SHIFT        = 0
    .ELSE
PAGE_INDER_SHIFT        = PAGE_DIGITS - 1
    .ENDIF

; Sprites of a custom menu. The cursor keeps its place in the console's 64 sprites whatever the
; design asks for: a longer list is cut, which also keeps its byte count below 256.
SPRITE_MAX              = 64
SPRITE_HIDDEN           = $F8   ; Y or X of a sprite that doesn't show
SPRITE_X_STEP           = $C4   ; 49 sprites: see SpriteSet
BIG_CURSOR_SIZE         = 4
    .IF BIG_CURSOR
SPRITE_TILE_MAX         = SPRITE_MAX - BIG_CURSOR_SIZE
    .ELSE
SPRITE_TILE_MAX         = SPRITE_MAX - 1
    .ENDIF
    .IF SPRITE_TILE_SIZE > SPRITE_TILE_MAX
SPRITE_TILE_SHOWN       = SPRITE_TILE_MAX
    .ELSE
SPRITE_TILE_SHOWN       = SPRITE_TILE_SIZE
    .ENDIF

; Background tiles from pattern table 0, sprites from pattern table 1
    .IF BIG_SPRITE
PPU_CTRL_VALUE          = NMI_MODE * $80 + $28
    .ELSE
PPU_CTRL_VALUE          = NMI_MODE * $80 + $08
    .ENDIF
PPU_MASK_VALUE          = $1E

; ---------------------------------------------------------------------------------------------
; RAM
; ---------------------------------------------------------------------------------------------

    .RSSET User_Addr
; sprites
Sprite_Count            .RS 1   ; sprites that are still free in this frame
Sprite_X_Index          .RS 1   ; offset in the sprite page at which this frame's first sprite lies
Sprite_List_Index       .RS 1
Cursor_List_Index       .RS 1
; input; where there are two bytes, one for each pad
Gamepad_Keep            .RS 2   ; buttons that are down
Gamepad_Once            .RS 2   ; buttons that went down in this frame, or repeat in it
Gamepad_Temp            .RS 2   ; last accepted value
Gamepad_0_State         .RS 1   ; first of two reads
Gamepad_1_State         .RS 1
Gamepad_0_Value         .RS 1
Gamepad_1_Value         .RS 1
Gamepad_Port_Value      .RS 1
Gamepad_Merge           .RS 2
Gamepad_Auto_Delay      .RS 2   ; frames of holding; the second byte is not used
; selection: Page is the first item of the page, Sel the selected item of the whole list
Page_Cur_L              .RS 1
Page_Cur_H              .RS 1
Page_Old_L              .RS 1
Page_Old_H              .RS 1
Sel_Cur_L               .RS 1
Sel_Cur_H               .RS 1
Sel_Old_L               .RS 1
Sel_Old_H               .RS 1
Sel_Data_L              .RS 1   ; offset of the selection in its page
Sel_Data_H              .RS 1
; page drawing
Page_Update_Flag        .RS 1   ; not 0 while a page is being redrawn
Item_Update_Index       .RS 1   ; row that is next
Item_Show_Cnt           .RS 1   ; rows done in this frame
Item_Show_L             .RS 1   ; item to write in that row
Item_Show_H             .RS 1
Item_Clean_L            .RS 1   ; item to wipe from it
Item_Clean_H            .RS 1
Time_Delay              .RS 1   ; frames that NmiDelay still waits; input rests meanwhile
; scratch
FC_Data_L               .RS 1
FC_Data_H               .RS 1
FC_Addr_L               .RS 1
FC_Addr_H               .RS 1
FC_Tile_L               .RS 1
FC_Tile_H               .RS 1
FC_Data_Tmp             .RS 1
FC_Data_Cnt             .RS 1
; digits of a number
Digits_1                .RS 1
Digits_10               .RS 1
Digits_100              .RS 1
; copy routine; From to Count lie as in its parameter block
FC_Clear_Val            .RS 1
FC_Cpy_From_L           .RS 1
FC_Cpy_From_H           .RS 1
FC_Cpy_To_L             .RS 1
FC_Cpy_To_H             .RS 1
FC_Cpy_Count_L          .RS 1
FC_Cpy_Count_H          .RS 1
FC_Cpy_Port_L           .RS 1   ; the parameter block
FC_Cpy_Port_H           .RS 1
; banks
Music_Bank_8000         .RS 1
Music_Bank_A000         .RS 1
Bank_Buf_8000           .RS 1   ; what SwitchBank8000 and SwitchBankA000 selected last
Bank_Buf_A000           .RS 1
User_Addr_End           .RS 1
; start of a game
FC_Word_L               .RS 1
FC_Word_H               .RS 1
Chr_Reg_0               .RS 1
Chr_Reg_1               .RS 1
Chr_Reg_2               .RS 1
Chr_Reg_3               .RS 1
Prg_Reg_0               .RS 1
Prg_Reg_1               .RS 1
Prg_Reg_2               .RS 1
Prg_Reg_3               .RS 1
Prg_Size                .RS 1
Chr_Size                .RS 1
Game_Prg_Offset_L       .RS 1
Game_Prg_Offset_H       .RS 1
Game_Prg_Size           .RS 1
Game_Chr_Offset_L       .RS 1
Game_Chr_Offset_H       .RS 1
Game_Chr_Size           .RS 1
Game_Flags              .RS 1
Game_Mapper             .RS 1
Game_Mapper_Code        .RS 1
Game_Mapper_Flag        .RS 1
Game_Prg_Banking_Mode   .RS 1
Game_Chr_Banking_Mode   .RS 1
Game_Reg_0_For_Chr      .RS 1
Game_Reg_1_For_Chr      .RS 1
Game_Reg_2_For_Chr      .RS 1
Game_Reg_3_For_Chr      .RS 1
Game_Reg_4_For_Chr      .RS 1
Game_Reg_5_For_Chr      .RS 1
Game_Reg_6_For_Chr      .RS 1
Game_Reg_7_For_Chr      .RS 1
Game_Reg_0_For_Prg      .RS 1
Game_Reg_1_For_Prg      .RS 1
Game_Reg_2_For_Prg      .RS 1
Game_Reg_3_For_Prg      .RS 1
Game_Reg_4_For_Prg      .RS 1
Game_Reg_5_For_Prg      .RS 1
Game_Reg_6_For_Prg      .RS 1
Game_Reg_7_For_Prg      .RS 1

Game_Temp_Reg_Addr      = Music_Bank_A000 + 1
GAME_SELECT_TEMP_SIZE   = Chr_Size + 1 - Game_Temp_Reg_Addr

    .RSSET $0200
FC_PPU_Buffer           .RS PPU_BUFFER_SIZE     ; records for the PPU
FC_PPU_Ctrl             .RS 1   ; value of PPU_CTRL
FC_PPU_Mask             .RS 1   ; value of PPU_MASK
FC_PPU_Cursor           .RS 1   ; next free offset in FC_PPU_Buffer
FC_PPU_Addr_L           .RS 1
FC_PPU_Addr_H           .RS 1
FC_PPU_Palette          = FC_PPU_Buffer + $E0   ; 32 bytes, sent in every quiet frame

; ---------------------------------------------------------------------------------------------
; File header
; ---------------------------------------------------------------------------------------------

    .INESPRG MENU_PRG_SIZE
    .INESCHR MENU_CHR_SIZE
    .INESMAP 4
    .INESMIR 1                  ; the write to MMC3_MIRRORING is what counts

; ---------------------------------------------------------------------------------------------
; Music banks
; ---------------------------------------------------------------------------------------------

    .IF MENU_MUSIC = 2
    .BANK SOUND_DATA_BANK_0 & BANK_DATA_MASK
    .ORG $8000
    INCBIN "menu_data/music_data_0.bank"
    .BANK SOUND_DATA_BANK_1 & BANK_DATA_MASK
    .ORG $A000
    INCBIN "menu_data/music_data_1.bank"
    .BANK SOUND_DATA_BANK_C000 & BANK_DATA_MASK
    .ORG $C000
    INCBIN "menu_data/music_data_2.bank"
    .ENDIF
    .IF MENU_MUSIC = 3
    .BANK SOUND_DATA_BANK_0 & BANK_DATA_MASK
    .ORG $8000
    INCBIN "menu_data/music_data_3.bank"
    .BANK SOUND_DATA_BANK_1 & BANK_DATA_MASK
    .ORG $A000
    INCBIN "menu_data/music_data_4.bank"
    .BANK SOUND_DATA_BANK_C000 & BANK_DATA_MASK
    .ORG $C000
    INCBIN "menu_data/music_data_5.bank"
    .ENDIF
    .IF MENU_MUSIC = 4
    .BANK SOUND_DATA_BANK_0 & BANK_DATA_MASK
    .ORG $8000
    INCBIN "menu_data/music_data_6.bank"
    .BANK SOUND_DATA_BANK_1 & BANK_DATA_MASK
    .ORG $A000
    INCBIN "menu_data/music_data_7.bank"
    .BANK SOUND_DATA_BANK_C000 & BANK_DATA_MASK
    .ORG $C000
    INCBIN "menu_data/music_data_8.bank"
    .ENDIF
    .IF MENU_MUSIC = 5
    .BANK SOUND_DATA_BANK_0 & BANK_DATA_MASK
    .ORG $8000
    INCBIN "menu_data/music_data_9.bank"
    .BANK SOUND_DATA_BANK_1 & BANK_DATA_MASK
    .ORG $A000
    INCBIN "menu_data/music_data_A.bank"
    .BANK SOUND_DATA_BANK_2 & BANK_DATA_MASK    ; the set maps it at $A000 by itself
    .ORG $A000
    INCBIN "menu_data/music_data_B.bank"
    .BANK SOUND_DATA_BANK_C000 & BANK_DATA_MASK
    .ORG $C000
    INCBIN "menu_data/music_data_C.bank"
    .ENDIF

; ---------------------------------------------------------------------------------------------
; Game records: the banks from 8 on go over 4 to 7 again, as the map of 512 KB has always had it.
; More than 8 banks of records would take more games than a list may hold.
; ---------------------------------------------------------------------------------------------

    .IF FINAL_DATA_ENABLE
    .IF FINAL_DATA_BANK_COUNT > 0
    .BANK (GAME_DATA_BANK + $00) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_0.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 1
    .BANK (GAME_DATA_BANK + $01) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_1.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 2
    .BANK (GAME_DATA_BANK + $02) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_2.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 3
    .BANK (GAME_DATA_BANK + $03) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_3.asm"
    .ENDIF
    .IF MENU_PRG_SIZE >= 16
    .IF FINAL_DATA_BANK_COUNT > 4
    .BANK (GAME_DATA_BANK + $04) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_4.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 5
    .BANK (GAME_DATA_BANK + $05) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_5.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 6
    .BANK (GAME_DATA_BANK + $06) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_6.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 7
    .BANK (GAME_DATA_BANK + $07) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_7.asm"
    .ENDIF
    .ENDIF
    .IF MENU_PRG_SIZE >= 32
    .IF FINAL_DATA_BANK_COUNT > 8
    .BANK (GAME_DATA_BANK + $04) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_8.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 9
    .BANK (GAME_DATA_BANK + $05) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_9.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 10
    .BANK (GAME_DATA_BANK + $06) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_A.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 11
    .BANK (GAME_DATA_BANK + $07) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_final_data_B.asm"
    .ENDIF
    .ENDIF
    .ELSE
    .IF DATA_BANK_COUNT > 0
    .BANK (GAME_DATA_BANK + $00) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_0.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 1
    .BANK (GAME_DATA_BANK + $01) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_1.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 2
    .BANK (GAME_DATA_BANK + $02) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_2.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 3
    .BANK (GAME_DATA_BANK + $03) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_3.asm"
    .ENDIF
    .IF MENU_PRG_SIZE >= 16
    .IF DATA_BANK_COUNT > 4
    .BANK (GAME_DATA_BANK + $04) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_4.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 5
    .BANK (GAME_DATA_BANK + $05) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_5.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 6
    .BANK (GAME_DATA_BANK + $06) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_6.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 7
    .BANK (GAME_DATA_BANK + $07) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_7.asm"
    .ENDIF
    .ENDIF
    .IF MENU_PRG_SIZE >= 32
    .IF DATA_BANK_COUNT > 8
    .BANK (GAME_DATA_BANK + $04) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_8.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 9
    .BANK (GAME_DATA_BANK + $05) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_9.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 10
    .BANK (GAME_DATA_BANK + $06) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_A.asm"
    .ENDIF
    .IF DATA_BANK_COUNT > 11
    .BANK (GAME_DATA_BANK + $07) & BANK_DATA_MASK
    .ORG GAME_DATA_ADDR
    INCLUDE "build/game_data_B.asm"
    .ENDIF
    .ENDIF
    .ENDIF

; ---------------------------------------------------------------------------------------------
; Game names: the banks from $B on all go to + $0B
; ---------------------------------------------------------------------------------------------

    .IF NAME_BANK_COUNT > 0
    .BANK (GAME_NAME_BANK + $00) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_0.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 1
    .BANK (GAME_NAME_BANK + $01) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_1.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 2
    .BANK (GAME_NAME_BANK + $02) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_2.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 3
    .BANK (GAME_NAME_BANK + $03) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_3.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 4
    .BANK (GAME_NAME_BANK + $04) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_4.asm"
    .ENDIF
    .IF MENU_PRG_SIZE >= 16
    .IF NAME_BANK_COUNT > 5
    .BANK (GAME_NAME_BANK + $05) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_5.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 6
    .BANK (GAME_NAME_BANK + $06) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_6.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 7
    .BANK (GAME_NAME_BANK + $07) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_7.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 8
    .BANK (GAME_NAME_BANK + $08) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_8.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 9
    .BANK (GAME_NAME_BANK + $09) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_9.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 10
    .BANK (GAME_NAME_BANK + $0A) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_A.asm"
    .ENDIF
    .ENDIF
    .IF MENU_PRG_SIZE >= 32
    .IF NAME_BANK_COUNT > 11
    .BANK (GAME_NAME_BANK + $0B) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_B.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 12
    .BANK (GAME_NAME_BANK + $0B) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_C.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 13
    .BANK (GAME_NAME_BANK + $0B) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_D.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 14
    .BANK (GAME_NAME_BANK + $0B) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_E.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 15
    .BANK (GAME_NAME_BANK + $0B) & BANK_DATA_MASK
    .ORG GAME_NAME_ADDR
    INCLUDE "build/game_list_F.asm"
    .ENDIF
    .ENDIF

; ---------------------------------------------------------------------------------------------
; Tiles
; ---------------------------------------------------------------------------------------------

    .BANK CHR_DATA_BANK & BANK_DATA_MASK
    .ORG CHR_DATA_ADDR
    .IF CUSTOM_MENU_ENABLE
    INCBIN "build/custom_chr_data.bin"
    .ELSE
    INCBIN "menu_data/chr_data.bin"
    .ENDIF

; ---------------------------------------------------------------------------------------------
; Program bank
; ---------------------------------------------------------------------------------------------

    .BANK PROGRAM_BANK & BANK_DATA_MASK
    .ORG PROGRAM_ADDR

; InitChr: puts the eight 1 KB CHR banks in order and sets the mirroring.
; Clobbers A, X.
InitChr:
    LDX #5
.Next:
    STX MMC3_BANK_CTRL
    LDA InitData,X
    STA MMC3_BANK_DATA
    DEX
    BPL .Next
    LDA #MIRRORING
    STA MMC3_MIRRORING
    RTS

InitData:
    .DB $00,$02,$04,$05,$06,$07

; NmiProgramProcess: one frame of the menu. What the PPU gets goes first, while the beam is away.
; Clobbers A, X, Y.
NmiProgramProcess:
    LDA #0
    STA PPU_CTRL
    JSR FC_PPU_Process
    LDA <Page_Update_Flag       ; while a page changes, its transfer takes the sprites' time
    BNE .Reset
    LDA #SPRITES_PAGE
    STA OAM_DMA
.Reset:
    JSR FC_PPU_Process_Reset
    LDA FC_PPU_Ctrl             ; from here on the next NMI may come in on top of this one
    STA PPU_CTRL
    JSR Gamepad_Process
    JSR Gamepad_Auto_Press
    JSR SelectItemIndex
    JSR UpdatePageContent
    JSR SpriteSet
    LDA <Time_Delay
    BEQ .Return
    DEC <Time_Delay
.Return:
    RTS

; ProgramBegin: start-up with the screen dark, entered by a jump from reset with an empty stack.
; Ends in MainLoop.
ProgramBegin:
    JSR InitChr
    LDX #2                      ; the PPU takes about two frames to wake up
.Warm:
    JSR NmiWait
.Fall:
    BIT PPU_STATUS
    BMI .Fall
    DEX
    BNE .Warm
    JSR NmiWait
    JSR PaletteClear
    JSR ScreenClear
    LDA #$0F
    STA APU_STATUS

    LDA #0                      ; RAM $0000 to $07FF; nothing stands on the stack now
    STA <$00
    STA <$01
    TAY
    LDX #8
.Clear:
    STA [$00],Y
    INY
    BNE .Clear
    INC <$01
    DEX
    BNE .Clear

    LDA #$FF
    STA <User_Addr_End
    JSR SpriteClear
    JSR PaletteSet
    JSR SetAttribute
    JSR WritePPUVram
    JSR Sund_Bank_Init
    .IF CUSTOM_MENU_ENABLE
    JSR WriteNameTable
    .ENDIF
    JSR UpdatePageEnable
    LDA #PPU_CTRL_VALUE
    STA FC_PPU_Ctrl
    STA PPU_CTRL
    LDA #16                     ; the first page goes out meanwhile, unseen
    JSR NmiDelay
    JSR SetTitleText
    .IF MENU_MUSIC >= 2
    LDA #SOUNG_BGM - 1
    JSR Sound_Init
    .ENDIF
    LDA #PPU_MASK_VALUE
    STA FC_PPU_Mask
    JMP MainLoop

; ---------------------------------------------------------------------------------------------
; Drawing
; ---------------------------------------------------------------------------------------------

; ScreenClear: zeros into pattern memory and name tables, PPU $0000 to $2FFF. Needs a dark screen.
; Clobbers A, X, Y.
ScreenClear:
    LDA #0
    STA PPU_ADDRESS
    STA PPU_ADDRESS
    TAX
    LDY #$30
.Next:
    STA PPU_DATA
    INX
    BNE .Next
    DEY
    BNE .Next
    RTS

; WritePPUVram: copies the tiles to pattern memory. Needs a dark screen. Leaves the tile bank at
; $A000. Clobbers A, X, Y.
WritePPUVram:
    LDA #CHR_DATA_BANK & BANK_DATA_MASK
    JSR SwitchBankA000
    LDX #LOW(PPUVramData)
    LDY #HIGH(PPUVramData)
    JMP FC_Data_Copy

PPUVramData:
    .DW CHR_DATA_ADDR,VRAM_PPU_ADDR,VRAM_PPU_SIZE
    .DB FC_MODE_RAM_TO_PPU

; WriteNameTable: copies the stored name table to the screen. Needs a dark screen. Leaves its bank
; at $A000. Clobbers A, X, Y.
WriteNameTable:
    LDA #NAME_TABLE_DATA_BANK & BANK_DATA_MASK
    JSR SwitchBankA000
    LDX #LOW(NameTableData)
    LDY #HIGH(NameTableData)
    JMP FC_Data_Copy

NameTableData:
    .DW NAME_TABLE_DATA_ADDR,NAME_TABLE_PPU_ADDR,NAME_TABLE_PPU_SIZE
    .DB FC_MODE_RAM_TO_PPU

FC_MODE_RAM_TO_RAM      = 0
FC_MODE_RAM_TO_PPU      = 1
FC_MODE_PPU_TO_RAM      = 2
FC_MODE_PPU_CLEAR       = 3
FC_MODE_RAM_CLEAR       = 4

; FC_Data_Copy: copies or clears exactly as many bytes as asked for; any other mode does nothing.
; Takes the address of a block of 7 bytes in X (low) and Y (high): words for source, destination
; and count, then the mode. The clear modes write FC_Clear_Val. The PPU modes need a dark screen.
; Clobbers A, X, Y and the FC_Cpy variables.
FC_Data_Copy:
    STX <FC_Cpy_Port_L
    STY <FC_Cpy_Port_H
    LDY #5
.Parameter:
    LDA [FC_Cpy_Port_L],Y
    STA FC_Cpy_From_L,Y
    DEY
    BPL .Parameter
    LDA <FC_Cpy_Count_L
    ORA <FC_Cpy_Count_H
    BEQ .Return
    LDY #6
    LDA [FC_Cpy_Port_L],Y
    CMP #FC_MODE_RAM_CLEAR + 1
    BCS .Return
    LDY #0
    CMP #FC_MODE_RAM_TO_RAM
    BEQ .RamToRam
    CMP #FC_MODE_RAM_CLEAR
    BEQ .RamClear
    CMP #FC_MODE_PPU_TO_RAM
    BEQ .PpuToRam
    LDX <FC_Cpy_To_H
    STX PPU_ADDRESS
    LDX <FC_Cpy_To_L
    STX PPU_ADDRESS
    CMP #FC_MODE_RAM_TO_PPU
    BEQ .RamToPpu
.PpuClear:
    LDA <FC_Clear_Val
    STA PPU_DATA
    JSR .Step
    BNE .PpuClear
    RTS
.RamToPpu:
    LDA [FC_Cpy_From_L],Y
    STA PPU_DATA
    JSR .Step
    BNE .RamToPpu
    RTS
.RamToRam:
    LDA [FC_Cpy_From_L],Y
    STA [FC_Cpy_To_L],Y
    JSR .Step
    BNE .RamToRam
    RTS
.RamClear:
    LDA <FC_Clear_Val
    STA [FC_Cpy_To_L],Y
    JSR .Step
    BNE .RamClear
    RTS
.PpuToRam:
    LDX <FC_Cpy_From_H
    STX PPU_ADDRESS
    LDX <FC_Cpy_From_L
    STX PPU_ADDRESS
    LDA PPU_DATA                ; the first read only fills the PPU's read buffer
.PpuNext:
    LDA PPU_DATA
    STA [FC_Cpy_To_L],Y
    JSR .Step
    BNE .PpuNext
.Return:
    RTS
.Step:                          ; Y and both pointers one byte on; Z is set after the last byte
    INY
    BNE .Count
    INC <FC_Cpy_From_H
    INC <FC_Cpy_To_H
.Count:
    LDA <FC_Cpy_Count_L
    BNE .Low
    DEC <FC_Cpy_Count_H
.Low:
    DEC <FC_Cpy_Count_L
    BNE .More
    LDA <FC_Cpy_Count_H
.More:
    RTS

; NmiWait: waits for the next vertical blank by polling; for use while NMIs are off.
; Clobbers nothing.
NmiWait:
    BIT PPU_STATUS
    BPL NmiWait
    RTS

; NmiDelay: waits frames, which the NMI counts down. Called inside the NMI it lets further NMIs
; come in on top; each ends before the next begins.
; Takes the number of frames in A. Clobbers A.
NmiDelay:
    STA <Time_Delay
.Wait:
    LDA <Time_Delay
    BNE .Wait
    RTS

; PaletteClear: black into all 32 entries, on screen and in FC_PPU_Palette. Needs a dark screen.
; Clobbers A, X.
PaletteClear:
    JSR PaletteAddrSet
    LDA #$0F
    LDX #31
.Next:
    STA FC_PPU_Palette,X
    STA PPU_DATA
    DEX
    BPL .Next
    RTS

; PaletteSet: copies the menu's palette into FC_PPU_Palette, from where the NMI sends it.
; Clobbers A, X.
PaletteSet:
    LDX #31
.Next:
    LDA PaletteData,X
    STA FC_PPU_Palette,X
    DEX
    BPL .Next
    RTS

; PaletteAddrSet: sets the PPU address to the palette. Clobbers A.
PaletteAddrSet:
    LDA PPU_STATUS              ; the next write to PPU_ADDRESS is the high byte
    LDA #HIGH(PALETTE_PPU_ADDR)
    STA PPU_ADDRESS
    LDA #LOW(PALETTE_PPU_ADDR)
    STA PPU_ADDRESS
    RTS

; SetAttribute: copies the attribute table to the screen. Needs a dark screen. Clobbers A, X.
SetAttribute:
    LDA #HIGH(ATTRIBUTE_PPU_ADDR)
    STA PPU_ADDRESS
    LDA #LOW(ATTRIBUTE_PPU_ADDR)
    STA PPU_ADDRESS
    LDX #0
.Next:
    LDA AttributeData,X
    STA PPU_DATA
    INX
    CPX #64
    BNE .Next
    RTS

; FC_PPU_Process: sends what waits in the command buffer; in a frame without records and without a
; page change, the palette. Clobbers A, X, Y.
FC_PPU_Process:
    LDA FC_PPU_Buffer
    BNE FC_PPU_Process_Beg
    LDA <Page_Update_Flag
    BEQ FC_PPU_Process_Update_Palette
    RTS

; FC_PPU_Process_Update_Palette: sends FC_PPU_Palette. Clobbers A, X.
FC_PPU_Process_Update_Palette:
    JSR PaletteAddrSet
    LDX #0
.Next:
    LDA FC_PPU_Palette,X
    STA PPU_DATA
    INX
    CPX #32
    BNE .Next
    RTS

; FC_PPU_Process_Beg: sends the records of the command buffer and empties it. Rendering goes off
; until FC_PPU_Process_Reset, so that a long transfer may run past the vertical blank.
; A record is its mode, PPU address high and low, a count, and that many tiles; MODE_CNTC stands
; for that many zeros and has no tiles. Any other mode ends the list. Clobbers A, X, Y.
FC_PPU_Process_Beg:
    LDX FC_PPU_Cursor
    LDA #0
    STA PPU_MASK
    STA FC_PPU_Buffer,X         ; the end mark
    STA FC_PPU_Cursor
    TAX
.Record:
    LDA FC_PPU_Buffer,X
    CMP #MODE_CNTL
    BEQ .Line
    CMP #MODE_CNTC
    BNE .Return
    JSR FC_PPU_Set_Addr
    BEQ .Record
    LDA #0
.Zero:
    STA PPU_DATA
    DEY
    BNE .Zero
    BEQ .Record
.Line:
    JSR FC_PPU_Set_Addr
    BEQ .Record
.Tile:
    LDA FC_PPU_Buffer,X
    STA PPU_DATA
    INX
    DEY
    BNE .Tile
    BEQ .Record
.Return:
    RTS

; FC_PPU_Set_Addr: reads the head of the record at offset X and sets the PPU address.
; Gives the record's count in Y with Z set for 0, the offset behind the head in X, and the address
; in FC_PPU_Addr. Clobbers A.
FC_PPU_Set_Addr:
    LDA FC_PPU_Buffer + 1,X
    STA FC_PPU_Addr_H
    LDA FC_PPU_Buffer + 2,X
    STA FC_PPU_Addr_L
    JSR FC_PPU_Write_Addr
    LDY FC_PPU_Buffer + 3,X
    INX
    INX
    INX
    INX
    CPY #0
    RTS

; FC_PPU_Write_Addr: sets the PPU address to FC_PPU_Addr. Clobbers A.
FC_PPU_Write_Addr:
    LDA PPU_STATUS
    LDA FC_PPU_Addr_H
    STA PPU_ADDRESS
    LDA FC_PPU_Addr_L
    STA PPU_ADDRESS
    RTS

; FC_PPU_Process_Reset: marks the command buffer empty and turns the picture on again at its
; origin. Clobbers A.
FC_PPU_Process_Reset:
    LDA #0
    STA FC_PPU_Buffer
    STA PPU_ADDRESS
    STA PPU_ADDRESS
    STA PPU_SCROLL
    STA PPU_SCROLL
    LDA FC_PPU_Mask
    STA PPU_MASK
    RTS

; FC_PPU_Put: appends the byte in A to the command buffer. Clobbers X.
FC_PPU_Put:
    LDX FC_PPU_Cursor
    STA FC_PPU_Buffer,X
    INC FC_PPU_Cursor
    RTS

; ---------------------------------------------------------------------------------------------
; Sprites
; ---------------------------------------------------------------------------------------------

; SpriteClear: hides all sprites. Clobbers A, X.
SpriteClear:
    LDX #0
    LDA #SPRITE_HIDDEN
.Next:
    STA SPRITES_ADDR,X
    INX
    BNE .Next
    RTS

; GetCursorPosY: gives the selected row's distance from the first one, in pixels, in FC_Data_Tmp.
; Clobbers A.
GetCursorPosY:
    SEC
    LDA <Sel_Cur_L
    SBC <Page_Cur_L
    ASL A
    ASL A
    ASL A
    .IF NAME_INSERT_ROW
    ASL A
    .ENDIF
    STA <FC_Data_Tmp
    RTS

    .IF CUSTOM_MENU_ENABLE

; The routines below take and give the write offset in the sprite page in Y. It is always that of a
; whole sprite, so the page wraps between sprites only.

; NextSprite: moves the write offset on by one sprite. Clobbers nothing.
NextSprite:
    DEC <Sprite_Count
    INY
    INY
    INY
    INY
    RTS

; SetCustomSpriteTile: copies the design's sprites to the sprite page. Leaves their bank at $A000.
; Clobbers A, X.
SetCustomSpriteTile:
    .IF SPRITE_TILE_SHOWN > 0
    LDA #SPRITE_TILE_BANK & BANK_DATA_MASK
    JSR SwitchBankA000
    LDX #0
.Sprite:
    LDA SPRITE_TILE_ADDR,X
    STA SPRITES_ADDR,Y
    LDA SPRITE_TILE_ADDR + 1,X
    STA SPRITES_ADDR + 1,Y
    LDA SPRITE_TILE_ADDR + 2,X
    STA SPRITES_ADDR + 2,Y
    LDA SPRITE_TILE_ADDR + 3,X
    STA SPRITES_ADDR + 3,Y
    JSR NextSprite
    INX
    INX
    INX
    INX
    STX <Sprite_List_Index
    CPX #SPRITE_TILE_SHOWN * 4
    BNE .Sprite
    .ENDIF
    RTS

    .IF BIG_CURSOR
; SetBigCursorArrow: puts the cursor's sprites beside the selected row, which FC_Data_Tmp gives.
; Clobbers A, X and FC_Data_Cnt.
SetBigCursorArrow:
    LDA #0                      ; how many of the four entries are in use
    STA <FC_Data_Cnt
    LDX #(BIG_CURSOR_SIZE - 1) * 4
.Count:
    LDA Big_Cursor_Data + 1,X
    BEQ .Unused
    INC <FC_Data_Cnt
.Unused:
    DEX
    DEX
    DEX
    DEX
    BPL .Count
    LDX #0
    STX <Cursor_List_Index
.Sprite:
    LDA <FC_Data_Cnt
    BEQ .Return
    DEC <FC_Data_Cnt
    LDX <Cursor_List_Index
    LDA Big_Cursor_Data + 1,X
    BEQ .Hidden
    LDA Big_Cursor_Data,X
    CLC
    ADC <FC_Data_Tmp
    JMP .Place
.Hidden:
    LDA #SPRITE_HIDDEN
.Place:
    STA SPRITES_ADDR,Y
    LDA Big_Cursor_Data + 1,X
    STA SPRITES_ADDR + 1,Y
    LDA Big_Cursor_Data + 2,X
    STA SPRITES_ADDR + 2,Y
    LDA Big_Cursor_Data + 3,X
    STA SPRITES_ADDR + 3,Y
    JSR NextSprite
    INX
    INX
    INX
    INX
    STX <Cursor_List_Index
    JMP .Sprite
.Return:
    RTS
    .ELSE
; SetSmallCursorArrow: puts the cursor sprite beside the selected row, which FC_Data_Tmp gives.
; Clobbers A.
SetSmallCursorArrow:
    LDA <FC_Data_Tmp
    CLC
    ADC #CURSOR_ARROW_Y
    STA SPRITES_ADDR,Y
    LDA #CURSOR_ARROW_TILE
    STA SPRITES_ADDR + 1,Y
    LDA #CURSOR_ARROW_MODE
    STA SPRITES_ADDR + 2,Y
    LDA #CURSOR_ARROW_X
    STA SPRITES_ADDR + 3,Y
    JMP NextSprite
    .ENDIF

; ResetSpriteData: hides the sprites that are left of the 64. Clobbers A.
ResetSpriteData:
    LDA <Sprite_Count
    BEQ .Return
    LDA #SPRITE_HIDDEN
    STA SPRITES_ADDR,Y
    STA SPRITES_ADDR + 3,Y
    LDA #0
    STA SPRITES_ADDR + 1,Y
    STA SPRITES_ADDR + 2,Y
    JSR NextSprite
    JMP ResetSpriteData
.Return:
    RTS

; SpriteSet: writes the sprite page for a custom menu. The PPU shows eight sprites per line, the
; first ones in its memory. So each frame begins 49 sprites further on in the page: on a line with
; more than eight a different one drops out each time, and all of them show. Clobbers A, X, Y.
SpriteSet:
    JSR GetCursorPosY
    LDA #SPRITE_MAX
    STA <Sprite_Count
    LDY <Sprite_X_Index
    JSR SetCustomSpriteTile
    .IF BIG_CURSOR
    JSR SetBigCursorArrow
    .ELSE
    JSR SetSmallCursorArrow
    .ENDIF
    JSR ResetSpriteData
    TYA
    CLC
    ADC #SPRITE_X_STEP
    STA <Sprite_X_Index
    RTS

    .ELSE

; SpriteSet: puts the default look's arrow beside the selected row. Clobbers A.
SpriteSet:
    JSR GetCursorPosY
    LDA <FC_Data_Tmp
    CLC
    ADC #ARROW_Y_OFFSET
    STA SPRITES_ADDR
    LDA #Char_Arrow
    STA SPRITES_ADDR + 1
    LDA #0
    STA SPRITES_ADDR + 2
    LDA #ARROW_X_OFFSET
    STA SPRITES_ADDR + 3
    RTS

    .ENDIF

; Y offset, tile, attribute and X of up to four sprites; a tile of 0 ends them. The zeros stand in
; for entries that the file doesn't hold.
Big_Cursor_Data:
    INCBIN "build/game_big_arrow_data.bin"
    .DB 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0

; ---------------------------------------------------------------------------------------------
; Input
; ---------------------------------------------------------------------------------------------

; Gamepad_Process: reads both pads. Gives the buttons that are down in Gamepad_Keep and those that
; went down in this frame in Gamepad_Once. Pad two acts as pad one as long as nobody sets
; GAMEPAD_MERGE_FLAG. Clobbers A, X.
Gamepad_Process:
    JSR GamepadDatacan
    LDA <Gamepad_0_Value
    STA <Gamepad_0_State
    LDA <Gamepad_1_Value
    STA <Gamepad_1_State
    JSR GamepadDatacan          ; a sample of the sound channel can spoil a read: take two
    LDX #1
.Pad:
    LDA <Gamepad_0_Value,X
    CMP <Gamepad_0_State,X
    BEQ .Same
    LDA <Gamepad_Temp,X
    STA <Gamepad_0_Value,X
.Same:
    DEX
    BPL .Pad
    LDA <Gamepad_Merge
    AND #GAMEPAD_MERGE_FLAG
    BNE .Apart
    LDA <Gamepad_0_Value
    ORA <Gamepad_1_Value
    STA <Gamepad_0_Value
.Apart:
    LDX #1
.Edge:
    LDA <Gamepad_0_Value,X
    EOR <Gamepad_Temp,X
    AND <Gamepad_0_Value,X
    STA <Gamepad_Once,X
    LDA <Gamepad_0_Value,X
    STA <Gamepad_Keep,X
    STA <Gamepad_Temp,X
    DEX
    BPL .Edge
    RTS

; GamepadDatacan: reads each pad once into Gamepad_0_Value and Gamepad_1_Value, A in bit 7 down to
; Right in bit 0. Pads plugged into the expansion port answer in bit 1. Clobbers A, X.
GamepadDatacan:
    LDX #1
    STX JOY1_FRAME
    DEX
    STX JOY1_FRAME
    LDX #8
.Button:
    LDA JOY1_FRAME
    STA <Gamepad_Port_Value
    LSR A
    ORA <Gamepad_Port_Value
    LSR A
    ROL <Gamepad_0_Value
    LDA JOY2_FRAME
    STA <Gamepad_Port_Value
    LSR A
    ORA <Gamepad_Port_Value
    LSR A
    ROL <Gamepad_1_Value
    DEX
    BNE .Button
    RTS

; Gamepad_Auto_Press: lets held buttons count as pressed again, first on the 30th frame and then on
; every fifth. Clobbers A.
Gamepad_Auto_Press:
    LDA <Gamepad_Keep
    ORA <Gamepad_Keep + 1
    BNE .Held
    STA <Gamepad_Auto_Delay
    RTS
.Held:
    INC <Gamepad_Auto_Delay
    LDA <Gamepad_Auto_Delay
    CMP #Gamepad_DELAY_MAX
    BCC .Return
    SBC #Gamepad_DELAY_SPEED    ; carry is set
    STA <Gamepad_Auto_Delay
    LDA <Gamepad_Keep
    STA <Gamepad_Once
    LDA <Gamepad_Keep + 1
    STA <Gamepad_Once + 1
.Return:
    RTS

; SelectItemIndex: acts on the buttons that went down. All tests but the one for Select and Down
; want the button alone, so other chords do nothing. Doesn't return from START. Clobbers A, X, Y.
SelectItemIndex:
    LDA <Page_Update_Flag
    ORA <Time_Delay
    BEQ .Open
    RTS
.Open:
    LDA <Gamepad_Once
    CMP #BTN_B
    BNE .NotB
    JSR SelectPageSound
    JSR SelectPreBigPage
.NotB:
    LDA <Gamepad_Once
    CMP #BTN_A
    BNE .NotA
    JSR SelectPageSound
    JSR SelectNextBigPage
.NotA:
    LDA <Gamepad_Once
    CMP #BTN_UP
    BNE .NotUp
    JSR SelectItemSound
    JSR SelectPreItem
.NotUp:
    LDA <Gamepad_Once
    AND #BTN_SELECT | BTN_DOWN
    BEQ .NotDown
    JSR SelectItemSound
    JSR SelectNextItem
.NotDown:
    LDA <Gamepad_Once
    CMP #BTN_LEFT
    BNE .NotLeft
    JSR SelectPageSound
    JSR SelectPrePage
.NotLeft:
    LDA <Gamepad_Once
    CMP #BTN_RIGHT
    BNE .NotRight
    JSR SelectPageSound
    JSR SelectNextPage
.NotRight:
    LDA <Gamepad_Once
    CMP #BTN_START
    BNE .Return
    JSR SelectEnterSound
    .IF MENU_MUSIC >= 1
    LDA #ENTER_TIME_DELAY
    JSR NmiDelay
    .ENDIF
    JMP SelectGame
.Return:
    RTS

; ---------------------------------------------------------------------------------------------
; Pages: moving the selection
; ---------------------------------------------------------------------------------------------

; SaveOldSelect: notes page and selection before a move. Clobbers A, X.
SaveOldSelect:
    LDX #1
.Next:
    LDA <Page_Cur_L,X
    STA <Page_Old_L,X
    LDA <Sel_Cur_L,X
    STA <Sel_Old_L,X
    DEX
    BPL .Next
    RTS

; IsFirstPage, IsLastPage, IsFirstItem, IsLastItem: give Z set if so. Clobber A.
IsFirstPage:
    LDA <Page_Cur_L
    ORA <Page_Cur_H
    RTS

IsLastPage:
    LDA <Page_Cur_L
    CMP #LOW(PAGE_MAX)
    BNE .Return
    LDA <Page_Cur_H
    CMP #HIGH(PAGE_MAX)
.Return:
    RTS

IsFirstItem:
    LDA <Sel_Cur_L
    ORA <Sel_Cur_H
    RTS

IsLastItem:
    LDA <Sel_Cur_L
    CMP #LOW(ITEM_MAX)
    BNE .Return
    LDA <Sel_Cur_H
    CMP #HIGH(ITEM_MAX)
.Return:
    RTS

; DecPageIndex, IncPageIndex, SetMinPage, SetMaxPage: one page back, one on, the first, the last.
; Clobber A, X.
DecPageIndex:
    SEC
    LDA <Page_Cur_L
    SBC #PAGE_SIZE
    STA <Page_Cur_L
    BCS PageChanged
    DEC <Page_Cur_H
    JMP PageChanged

IncPageIndex:
    CLC
    LDA <Page_Cur_L
    ADC #PAGE_SIZE
    STA <Page_Cur_L
    BCC PageChanged
    INC <Page_Cur_H
    JMP PageChanged

SetMinPage:
    LDA #0
    STA <Page_Cur_L
    STA <Page_Cur_H
    JMP PageChanged

SetMaxPage:
    LDA #LOW(PAGE_MAX)
    STA <Page_Cur_L
    LDA #HIGH(PAGE_MAX)
    STA <Page_Cur_H
    ; falls through

; PageChanged: has the page redrawn; with a single page there is nothing to redraw. Clobbers A, X.
PageChanged:
    .IF PAGE_MAX_COUNT > 1
    JMP UpdatePageEnable
    .ELSE
    RTS
    .ENDIF

; GetItemOffset: gives the selection's offset in its page in Sel_Data. Clobbers A.
GetItemOffset:
    SEC
    LDA <Sel_Cur_L
    SBC <Page_Cur_L
    STA <Sel_Data_L
    LDA <Sel_Cur_H
    SBC <Page_Cur_H
    STA <Sel_Data_H
    RTS

; SetItemOffset: selects the item at offset Sel_Data of the page, or the last item of the list if
; the page is too short. Clobbers A.
SetItemOffset:
    CLC
    LDA <Page_Cur_L
    ADC <Sel_Data_L
    STA <Sel_Cur_L
    LDA <Page_Cur_H
    ADC <Sel_Data_H
    STA <Sel_Cur_H
    LDA #LOW(ITEM_MAX)
    CMP <Sel_Cur_L
    LDA #HIGH(ITEM_MAX)
    SBC <Sel_Cur_H
    BCS .Return
    JMP SelectLastItem
.Return:
    RTS

; SelectFirstItem, SelectLastItem: set Sel_Cur. Clobber A.
SelectFirstItem:
    LDA #0
    STA <Sel_Cur_L
    STA <Sel_Cur_H
    RTS

SelectLastItem:
    LDA #LOW(ITEM_MAX)
    STA <Sel_Cur_L
    LDA #HIGH(ITEM_MAX)
    STA <Sel_Cur_H
    RTS

; SelectPreItem: one item up; from the first one to the last. Clobbers A, X.
SelectPreItem:
    JSR SaveOldSelect
    JSR IsFirstItem
    BNE .Up
    JSR SetMaxPage
    JMP SelectLastItem
.Up:
    LDA <Sel_Cur_L
    CMP <Page_Cur_L
    BNE .SamePage
    JSR DecPageIndex
.SamePage:
    LDA <Sel_Cur_L
    BNE .Low
    DEC <Sel_Cur_H
.Low:
    DEC <Sel_Cur_L
    RTS

; SelectNextItem: one item down; from the last one to the first. Clobbers A, X.
SelectNextItem:
    JSR SaveOldSelect
    JSR IsLastItem
    BNE .Down
    JSR SetMinPage
    JMP SelectFirstItem
.Down:
    CLC
    LDA <Page_Cur_L
    ADC #PAGE_SIZE - 1
    CMP <Sel_Cur_L
    BNE .SamePage
    JSR IncPageIndex
.SamePage:
    INC <Sel_Cur_L
    BNE .Return
    INC <Sel_Cur_H
.Return:
    RTS

; SelectPrePage: one page back with the offset kept; from the first one to the last.
; Clobbers A, X.
SelectPrePage:
    JSR SaveOldSelect
    JSR GetItemOffset
    JSR IsFirstPage
    BNE .Back
    JSR SetMaxPage
    JMP SetItemOffset
.Back:
    JSR DecPageIndex
    JMP SetItemOffset

; SelectNextPage: one page on with the offset kept; from the last one to the first.
; Clobbers A, X.
SelectNextPage:
    JSR SaveOldSelect
    JSR GetItemOffset
    JSR IsLastPage
    BNE .On
    JSR SetMinPage
    JMP SetItemOffset
.On:
    JSR IncPageIndex
    JMP SetItemOffset

; SelectPreBigPage: as SelectPrePage, but up to PAGE_BIG_SIZE pages, no further than the first.
; Clobbers A, X and FC_Data_Cnt.
SelectPreBigPage:
    JSR IsFirstPage
    BEQ SelectPrePage
    JSR SaveOldSelect
    JSR GetItemOffset
    LDA #PAGE_BIG_SIZE
    STA <FC_Data_Cnt
.Page:
    JSR DecPageIndex
    JSR IsFirstPage
    BEQ .Arrived
    DEC <FC_Data_Cnt
    BNE .Page
.Arrived:
    JMP SetItemOffset

; SelectNextBigPage: as SelectNextPage, but up to PAGE_BIG_SIZE pages, no further than the last.
; Clobbers A, X and FC_Data_Cnt.
SelectNextBigPage:
    JSR IsLastPage
    BEQ SelectNextPage
    JSR SaveOldSelect
    JSR GetItemOffset
    LDA #PAGE_BIG_SIZE
    STA <FC_Data_Cnt
.Page:
    JSR IncPageIndex
    JSR IsLastPage
    BEQ .Arrived
    DEC <FC_Data_Cnt
    BNE .Page
.Arrived:
    JMP SetItemOffset

; ---------------------------------------------------------------------------------------------
; Pages: redrawing
; ---------------------------------------------------------------------------------------------

; UpdatePageEnable: starts the redraw of the page: the names from Page_Old on are wiped, those from
; Page_Cur on written. Clobbers A, X.
UpdatePageEnable:
    LDX #1
.Next:
    LDA <Page_Cur_L,X
    STA <Item_Show_L,X
    LDA <Page_Old_L,X
    STA <Item_Clean_L,X
    DEX
    BPL .Next
    LDA #0
    STA <Item_Update_Index
    LDA #1
    STA <Page_Update_Flag
    RTS

; UpdatePageDisable: ends the redraw. Clobbers A.
UpdatePageDisable:
    LDA #0
    STA <Page_Update_Flag
    RTS

; UpdatePageContent: this frame's share of a redraw, up to ITEM_BUF_MAX rows, and in the frame
; after the last row the page number. The rows of a frame must not outgrow the command buffer:
; behind it lie the values of PPU_CTRL and PPU_MASK. A record that doesn't fit any more ends the
; frame's share, and the next frame goes on with the same row; its name may then be wiped a second
; time, which does no harm. Clobbers A, X, Y.
UpdatePageContent:
    LDA <Page_Update_Flag
    BEQ .Return
    LDA <Item_Update_Index
    CMP #PAGE_SIZE
    BCC .Rows
    JSR UpdatePageDisable
    JMP ShowPageIndex
.Rows:
    LDA #0
    STA <Item_Show_Cnt
.Row:
    JSR CleanOnceItem
    BCS .Return
    JSR WriteOnceItem
    BCS .Return
    INC <Item_Clean_L
    BNE .CleanNext
    INC <Item_Clean_H
.CleanNext:
    INC <Item_Show_L
    BNE .ShowNext
    INC <Item_Show_H
.ShowNext:
    INC <Item_Update_Index
    LDA <Item_Update_Index
    CMP #PAGE_SIZE
    BCS .Return
    INC <Item_Show_Cnt
    LDA <Item_Show_Cnt
    CMP #ITEM_BUF_MAX
    BCC .Row
.Return:
    RTS

; FindTableEntry: finds an item's entry in one of the two tables, names or records. An index byte
; per item tells its bank; each bank begins with the number of its first item and the addresses of
; its entries.
; Takes the item in FC_Addr, the high byte of the index's address in X (it starts on a page) and
; the table's first bank in Y. Gives the entry's address in FC_Data, its bank at $A000.
; Clobbers A, Y and FC_Word.
FindTableEntry:
    LDA <FC_Addr_L
    STA <FC_Data_L
    TXA
    CLC
    ADC <FC_Addr_H
    STA <FC_Data_H
    LDA #GAME_DATA_INDEX & BANK_DATA_MASK
    JSR SwitchBankA000
    TYA
    LDY #0
    CLC
    ADC [FC_Data_L],Y
    JSR SwitchBankA000
    SEC
    LDA <FC_Addr_L
    SBC GAME_NAME_ADDR
    STA <FC_Word_L
    LDA <FC_Addr_H
    SBC GAME_NAME_ADDR + 1
    STA <FC_Word_H
    ASL <FC_Word_L
    ROL <FC_Word_H
    CLC
    LDA <FC_Word_L
    ADC #LOW(GAME_NAME_ADDR + 2)
    STA <FC_Data_L
    LDA <FC_Word_H
    ADC #HIGH(GAME_NAME_ADDR + 2)
    STA <FC_Data_H
    LDA [FC_Data_L],Y
    PHA
    INY
    LDA [FC_Data_L],Y
    STA <FC_Data_H
    PLA
    STA <FC_Data_L
    RTS

; OpenNameRecord: begins the record of row Item_Update_Index for a name.
; Takes the item in FC_Addr. Gives carry set if the record doesn't fit the command buffer in this
; frame. Gives carry clear and Z set if there is nothing to write: no such item, an empty name, or
; a row below the screen, whose tiles would fall on the colours. Else the record's head is written,
; FC_Data_Cnt is the length, FC_Data points at the name's length byte with its bank at $A000, and
; FC_Tile one byte before the row in the stored name table. Clobbers A, X, Y and FC_Word.
OpenNameRecord:
    LDA #LOW(ITEM_MAX)
    CMP <FC_Addr_L
    LDA #HIGH(ITEM_MAX)
    SBC <FC_Addr_H
    BCC .Nothing
    LDA <Item_Update_Index
    ASL A
    TAX
    LDA ItemShowPos,X
    CMP #LOW(ATTRIBUTE_PPU_ADDR)
    LDA ItemShowPos + 1,X
    SBC #HIGH(ATTRIBUTE_PPU_ADDR)
    BCS .Nothing
    LDX #HIGH(GAME_NAME_INDEX_ADDR)
    LDY #GAME_NAME_BANK & BANK_DATA_MASK
    JSR FindTableEntry
    LDY #0
    LDA [FC_Data_L],Y
    BEQ .Nothing
    CMP #NAME_LENGTH_MAX + 1
    BCC .Length
    LDA #NAME_LENGTH_MAX
.Length:
    STA <FC_Data_Cnt
    CLC
    ADC FC_PPU_Cursor
    BCS .Return
    CMP #PPU_BUFFER_SIZE - RECORD_HEAD
    BCS .Return
    LDA <Item_Update_Index
    ASL A
    TAX
    LDY ItemShowPos,X
    LDA ItemShowPos + 1,X
    JMP OpenRecord
.Nothing:
    LDA #0
    CLC
.Return:
    RTS

; OpenRecord: writes the head of a record and finds the place of its tiles in the stored name
; table. Takes the PPU address in Y (low) and A (high) and the length, not 0, in FC_Data_Cnt.
; Gives FC_Tile one byte before that place, and carry and Z clear. Clobbers A, X, Y.
OpenRecord:
    PHA
    LDA #MODE_CNTL
    JSR FC_PPU_Put
    PLA
    JSR FC_PPU_Put
    AND #$03
    ORA #HIGH(NAME_TABLE_DATA_ADDR)
    STA <FC_Tile_H
    TYA
    JSR FC_PPU_Put
    CPY #0
    BNE .SamePage
    DEC <FC_Tile_H
.SamePage:
    DEY
    STY <FC_Tile_L
    LDA <FC_Data_Cnt
    JSR FC_PPU_Put
    CLC
    LDA <FC_Data_Cnt            ; never 0
    RTS

; WriteOnceItem: appends the record that writes the name of Item_Show in row Item_Update_Index.
; Gives carry set if it doesn't fit; then nothing is written. Clobbers A, X, Y and scratch.
WriteOnceItem:
    LDA <Item_Show_L
    STA <FC_Addr_L
    LDA <Item_Show_H
    STA <FC_Addr_H
    JSR OpenNameRecord
    BCS WriteTextReturn
    BEQ WriteTextReturn
    ; falls through

; WriteText: appends a text's tiles to the command buffer. A blank lets the design show through:
; the tile of the stored name table takes its place.
; Takes FC_Data at the byte before the text, its length in FC_Data_Cnt, and FC_Tile one byte
; before its place in the stored name table. Gives carry clear. Clobbers A, X, Y.
WriteText:
    LDY #1
.Next:
    LDA [FC_Data_L],Y
    CMP #' '
    BEQ .Blank
    JSR GetMappingChar
    JMP .Put
.Blank:
    JSR Write_Tile_Replace
.Put:
    JSR FC_PPU_Put
    CPY <FC_Data_Cnt
    INY
    BCC .Next
    CLC
WriteTextReturn:
    RTS

; Write_Tile_Replace, Write_Caption_Replace: give the background tile at FC_Tile + Y in A. The
; bank that is mapped at $A000 comes back. Clobber X.
Write_Tile_Replace:
Write_Caption_Replace:
    LDX #7
    STX MMC3_BANK_CTRL
    LDA #NAME_TABLE_DATA_BANK & BANK_DATA_MASK
    STA MMC3_BANK_DATA          ; past Bank_Buf_A000, which still tells the bank to come back
    LDA [FC_Tile_L],Y
    STX MMC3_BANK_CTRL
    LDX <Bank_Buf_A000
    STX MMC3_BANK_DATA
    RTS

; CleanOnceItem: appends the record that wipes the name of Item_Clean from row Item_Update_Index.
; Gives carry set if it doesn't fit; then nothing is written. Clobbers A, X, Y and scratch.
CleanOnceItem:
    LDA <Item_Clean_L
    STA <FC_Addr_L
    LDA <Item_Clean_H
    STA <FC_Addr_H
    JSR OpenNameRecord
    BCS WriteTextReturn
    BEQ WriteTextReturn
    ; falls through

; Clear_Tile_Replace: appends FC_Data_Cnt background tiles from FC_Tile + 1 on to the command
; buffer. Leaves the stored name table at $A000. Gives carry clear. Clobbers A, X, Y.
Clear_Tile_Replace:
    LDA #NAME_TABLE_DATA_BANK & BANK_DATA_MASK
    JSR SwitchBankA000
    LDY #1
.Next:
    LDA [FC_Tile_L],Y
    JSR FC_PPU_Put
    CPY <FC_Data_Cnt
    INY
    BCC .Next
    CLC
    RTS

; SetTitleText: appends the records of TitleText and waits a frame. Runs in the main line, right
; behind an NMI, and has the rest of the frame. A slow first page may still be going out: the title
; waits for a frame in which it fits behind the names. Clobbers A, X, Y and scratch.
SetTitleText:
    LDA #LOW(TitleText)
    STA <FC_Data_L
    LDA #HIGH(TitleText)
    STA <FC_Data_H
.Record:
    LDY #0
    LDA [FC_Data_L],Y
    CMP #MODE_CNTL
    BNE .Done
.Fit:
    LDA FC_PPU_Cursor
    CMP #PPU_BUFFER_SIZE - RECORD_HEAD - SCREEN_COLUMNS
    BCC .Fits
    LDA #1
    JSR NmiDelay
    JMP .Fit
.Fits:
    LDY #3
    LDA [FC_Data_L],Y
    STA <FC_Data_Cnt
    LDY #1
    LDA [FC_Data_L],Y
    PHA
    INY
    LDA [FC_Data_L],Y
    TAY
    CLC                         ; on to the length byte
    LDA <FC_Data_L
    ADC #3
    STA <FC_Data_L
    BCC .SamePage
    INC <FC_Data_H
.SamePage:
    PLA
    JSR OpenRecord
    JSR WriteText
    SEC                         ; on to the next record: the length byte and the text
    LDA <FC_Data_L
    ADC <FC_Data_Cnt
    STA <FC_Data_L
    BCC .Record
    INC <FC_Data_H
    BNE .Record
.Done:
    LDA #1
    JMP NmiDelay

; GetMappingChar: gives the tile of the character in A. Clobbers X.
GetMappingChar:
    .IF CHAR_MODE_OPEN
    TAX
    LDA Char_Mapping_Data,X
    .ENDIF
    RTS

    .IF SHOW_PAGE_NUMBER

; ShowPageIndex: appends the record of the page number: this page, a slash, the number of pages.
; Clobbers A, X, Y and the digits.
ShowPageIndex:
    LDA #MODE_CNTL
    JSR FC_PPU_Put
    LDA #HIGH(PAGE_INDER_SHOW_POS)
    JSR FC_PPU_Put
    LDA #LOW(PAGE_INDER_SHOW_POS) - PAGE_INDER_SHIFT
    JSR FC_PPU_Put
    LDA #PAGE_DIGITS * 2 + 1
    JSR FC_PPU_Put
    JSR GetPageIndex
    JSR ShowPageIndexWrite
    LDA #'/'
    JSR GetMappingChar
    JSR FC_PPU_Put
    LDA #LOW(PAGE_MAX_COUNT)
    ; falls through

; ShowPageIndexWrite: appends the number in A with PAGE_DIGITS digits. Clobbers A, X and the digits.
ShowPageIndexWrite:
    JSR HexToDec
    .IF PAGE_DIGITS >= 3
    LDA <Digits_100
    JSR .Digit
    .ENDIF
    .IF PAGE_DIGITS >= 2
    LDA <Digits_10
    JSR .Digit
    .ENDIF
    LDA <Digits_1
.Digit:
    ORA #'0'
    JSR GetMappingChar
    JMP FC_PPU_Put

; GetPageIndex: gives the number of the page, counted from 1, in A. It counts in 8 bits: with more
; than 255 pages the number shown starts again. Clobbers X, Y and FC_Data.
GetPageIndex:
    LDY #0
    STY <FC_Data_L
    STY <FC_Data_H
.Page:
    INY
    LDA <FC_Data_L
    CMP <Page_Cur_L
    BNE .Next
    LDA <FC_Data_H
    CMP <Page_Cur_H
    BEQ .Found
.Next:
    CLC
    LDA <FC_Data_L
    ADC #PAGE_SIZE
    STA <FC_Data_L
    BCC .Page
    INC <FC_Data_H
    BNE .Page
.Found:
    TYA
    RTS

; HexToDec: splits the number in A into Digits_100, Digits_10 and Digits_1. Clobbers A, X.
HexToDec:
    LDX #0
.Hundred:
    CMP #100
    BCC .Tens
    SBC #100
    INX
    BNE .Hundred
.Tens:
    STX <Digits_100
    LDX #0
.Ten:
    CMP #10
    BCC .Ones
    SBC #10
    INX
    BNE .Ten
.Ones:
    STX <Digits_10
    STA <Digits_1
    RTS

    .ELSE

; ShowPageIndex: this menu shows no page number.
ShowPageIndex:
    RTS

    .ENDIF

; ---------------------------------------------------------------------------------------------
; Sound
; ---------------------------------------------------------------------------------------------

; SelectItemSound, SelectPageSound, SelectEnterSound: the sounds of a move, a page and START.
; Clobber A, X, Y.
SelectItemSound:
    .IF MENU_MUSIC >= 2
    LDA #SOUNG_ITEM - 1
    JMP Sound_Init
    .ENDIF
    .IF MENU_MUSIC = 1
    LDA #$03
    STA APU_STATUS
    LDX #0
.Next:
    LDA ButtonSoundData,X
    STA APU_PULSE_1,X
    INX
    CPX #4
    BNE .Next
    .ENDIF
    RTS

SelectPageSound:
    .IF MENU_MUSIC >= 2
    LDA #SOUNG_PAGE - 1
    JMP Sound_Init
    .ENDIF
    .IF MENU_MUSIC = 1
    LDA #$03
    STA APU_STATUS
    LDX #0
.Next:
    LDA PageSoundData,X
    STA APU_PULSE_1,X
    INX
    CPX #4
    BNE .Next
    .ENDIF
    RTS

SelectEnterSound:
    .IF MENU_MUSIC >= 2
    LDA #SOUNG_ENTER - 1
    JMP Sound_Init
    .ENDIF
    .IF MENU_MUSIC = 1
    LDA #$02
    STA APU_STATUS
    LDX #0
.Next:
    LDA EnterSoundData,X
    STA APU_PULSE_2,X
    INX
    CPX #4
    BNE .Next
    .ENDIF
    RTS

    .IF MENU_MUSIC = 1
ButtonSoundData:
    .DB $87,$89,$F0,$00
PageSoundData:
    .DB $3F,$9A,$FF,$00
EnterSoundData:
    .DB $3F,$9A,$FF,$00
    .ENDIF

; StopSound: silences the sound unit. Clobbers A, X.
StopSound:
    LDA #0
    LDX #$13
.Next:
    STA APU_PULSE_1,X
    DEX
    BPL .Next
    STA APU_STATUS
    RTS

; ---------------------------------------------------------------------------------------------
; Board layer: SelectGame, entered by a jump with the chosen item in Sel_Cur. It never returns.
; ---------------------------------------------------------------------------------------------

; SelectGameDark: NMI, picture and sound off, the screen black. Nothing of the menu is left in pattern
; memory and name tables: games may take them for empty. Both tables are reached, because the menu's
; mirroring still holds. Clobbers A, X, Y.
SelectGameDark:
    LDA #0
    STA PPU_CTRL                ; no NMI from here on
    STA PPU_MASK
    JSR NmiWait
    JSR PaletteClear
    JSR StopSound
    JMP ScreenClear

; CopySelectGameProc: copies the routine that starts a game to RAM. Clobbers A, X.
CopySelectGameProc:
    LDX #0
.Next:
    LDA SelectGameProc,X
    STA SELECT_ADDR,X
    INX
    CPX #SELECT_GAME_PROC_SIZE
    BNE .Next
    RTS

; ClearGameRegisters: zeros for the registers of CHR and of PRG, which lie side by side.
; Clobbers A, X.
ClearGameRegisters:
    LDA #0
    LDX #15
.Next:
    STA <Game_Reg_0_For_Chr,X
    DEX
    BPL .Next
    RTS

; OpenGameRecord: finds the record of the game Sel_Cur. Gives its address in FC_Data with its bank
; at $A000, and 0 in Y. Clobbers A, X, FC_Addr and FC_Word.
OpenGameRecord:
    LDA <Sel_Cur_L
    STA <FC_Addr_L
    LDA <Sel_Cur_H
    STA <FC_Addr_H
    LDX #HIGH(GAME_DATA_INDEX_ADDR)
    LDY #GAME_DATA_BANK & BANK_DATA_MASK
    JSR FindTableEntry
    LDY #0
    RTS

    .IF FINAL_DATA_ENABLE
    .IF BOARD_TYPE = MULTICATR_TYPE_COOLGIRL
    INCLUDE "coolgirl_final_data.asm"
    .ELSE
    INCLUDE "coolboy_final_data.asm"
    .ENDIF
    .ELSE
; GetGameConfig: reads the record of the game Sel_Cur, whose 8 bytes lie in RAM as in the table, from
; Game_Prg_Offset to Game_Mapper. Clobbers A, X, Y and scratch.
GetGameConfig:
    JSR OpenGameRecord
.Next:
    LDA [FC_Data_L],Y
    STA Game_Prg_Offset_L,Y
    INY
    CPY #8
    BNE .Next
    RTS

    .IF BOARD_TYPE = MULTICATR_TYPE_COOLGIRL
    INCLUDE "coolgirl.asm"
    .ELSE
    INCLUDE "coolboy.asm"
    .ENDIF
    .ENDIF

; ---------------------------------------------------------------------------------------------
; Tables of the program bank
; ---------------------------------------------------------------------------------------------

; Two bits per block of 2 by 2 tiles, a byte for 4 by 4: which of the four palettes colours it
AttributeData:
    .IF CUSTOM_MENU_ENABLE
    INCBIN "build/game_attributes_data.bin"
    .ELSE
    .IF MENU_SHOW_STYLE = 0
    .DB $00,$00,$00,$00,$00,$00,$00,$00
    .DB $55,$55,$55,$55,$55,$55,$55,$55
    .DB $55,$55,$55,$55,$55,$55,$55,$55
    .DB $55,$55,$55,$55,$55,$55,$55,$55
    .DB $55,$55,$55,$55,$55,$55,$55,$55
    .DB $55,$55,$55,$55,$55,$55,$55,$55
    .DB $A5,$A5,$A5,$A5,$A5,$A5,$A5,$A5
    .DB $AA,$AA,$AA,$AA,$AA,$AA,$AA,$AA
    .ELSE
    .DB $55,$55,$AA,$55,$AA,$66,$55,$55
    .DB $00,$00,$00,$00,$00,$00,$00,$00
    .DB $00,$00,$00,$00,$00,$00,$00,$00
    .DB $00,$00,$00,$00,$00,$00,$00,$00
    .DB $00,$00,$00,$00,$00,$00,$00,$00
    .DB $00,$00,$00,$00,$00,$00,$00,$00
    .DB $F0,$F0,$F0,$F0,$F0,$F0,$F0,$F0
    .DB $FF,$FF,$FF,$FF,$FF,$FF,$FF,$FF
    .ENDIF
    .ENDIF

; Four palettes for the background, four for sprites
PaletteData:
    .IF CUSTOM_MENU_ENABLE
    INCBIN "build/game_bkg_palette_data.bin"
    INCBIN "build/game_sprite_palette_data.bin"
    .ELSE
    .IF MENU_SHOW_STYLE = 0
    .DB $0F,$24,$23,$23, $0F,$21,$21,$21, $0F,$27,$22,$22, $0F,$22,$22,$22
    .DB $0F,$22,$22,$22, $0F,$24,$24,$24, $0F,$21,$21,$21, $0F,$22,$22,$22
    .ELSE
    .DB $0F,$20,$2A,$2A, $0F,$25,$2C,$2C, $0F,$2A,$27,$27, $0F,$21,$28,$16
    .DB $0F,$20,$2A,$2A, $0F,$27,$2C,$2C, $0F,$2A,$27,$27, $0F,$25,$28,$16
    .ENDIF
    .ENDIF

; The tile of each character code
Char_Mapping_Data:
    INCBIN "build/char_mapping.bin"

; Mask bits of the COOLBOY registers by size: PRG in 16 KB units / 16, CHR in 8 KB units / 32.
; Bits 3 to 0 are those of A20, A19, A18 and A17.
ROM_Size_Mask:
    .DB %00000011               ; 128 KB
    .DB %00000010               ; 256 KB
    .DB %00000000               ; 512 KB
    .DB %00000000
    .DB %00000100               ; 1 MB
    .DB %00000000
    .DB %00000000
    .DB %00000000
    .DB %00001100               ; 2 MB

; PPU address of each row. With blank rows between the names 15 of them are as many as the screen
; has room for; the rest only keep a bigger page from reading past the table.
ItemShowPos:
    .IF NAME_INSERT_ROW
    .DW ITEM_SHOW_POS,         ITEM_SHOW_POS + $0040, ITEM_SHOW_POS + $0080
    .DW ITEM_SHOW_POS + $00C0, ITEM_SHOW_POS + $0100, ITEM_SHOW_POS + $0140
    .DW ITEM_SHOW_POS + $0180, ITEM_SHOW_POS + $01C0, ITEM_SHOW_POS + $0200
    .DW ITEM_SHOW_POS + $0240, ITEM_SHOW_POS + $0280, ITEM_SHOW_POS + $02C0
    .DW ITEM_SHOW_POS + $0300, ITEM_SHOW_POS + $0340, ITEM_SHOW_POS + $0380
    .DW ITEM_SHOW_POS + $03C0, ITEM_SHOW_POS + $0400, ITEM_SHOW_POS + $0440
    .DW ITEM_SHOW_POS + $0480, ITEM_SHOW_POS + $04C0
    .ELSE
    .DW ITEM_SHOW_POS,         ITEM_SHOW_POS + $0020, ITEM_SHOW_POS + $0040
    .DW ITEM_SHOW_POS + $0060, ITEM_SHOW_POS + $0080, ITEM_SHOW_POS + $00A0
    .DW ITEM_SHOW_POS + $00C0, ITEM_SHOW_POS + $00E0, ITEM_SHOW_POS + $0100
    .DW ITEM_SHOW_POS + $0120, ITEM_SHOW_POS + $0140, ITEM_SHOW_POS + $0160
    .DW ITEM_SHOW_POS + $0180, ITEM_SHOW_POS + $01A0, ITEM_SHOW_POS + $01C0
    .DW ITEM_SHOW_POS + $01E0, ITEM_SHOW_POS + $0200, ITEM_SHOW_POS + $0220
    .DW ITEM_SHOW_POS + $0240, ITEM_SHOW_POS + $0260, ITEM_SHOW_POS + $0280
    .ENDIF

; Records in the command buffer's form that are written once, at start-up
TitleText:
    .IF CUSTOM_MENU_ENABLE
    .IF CAPTION_LENGTH > 0
    .DB MODE_CNTL,HIGH(TITLE_SHOW_POS),LOW(TITLE_SHOW_POS)
    INCLUDE "build/game_caption_data.asm"
    .ENDIF
    .ELSE
    .DB MODE_CNTL,HIGH(TITLE_SHOW_POS),LOW(TITLE_SHOW_POS)
    .IF MENU_SHOW_STYLE = 0
    INCLUDE "build/game_title.asm"
    .ELSE
    .STR "PUSH SEL OR START BUTTON"
    .ENDIF
    .ENDIF
    .DB MODE_OVER

; ---------------------------------------------------------------------------------------------
; Tables of the last bank, read at $A000
; ---------------------------------------------------------------------------------------------

    .BANK GAME_DATA_INDEX & BANK_DATA_MASK
    .ORG GAME_DATA_INDEX_ADDR
    .IF FINAL_DATA_ENABLE
    INCLUDE "build/game_final_data_bank.asm"
    .ELSE
    INCLUDE "build/game_data_bank.asm"
    .ENDIF

    .BANK GAME_NAME_INDEX & BANK_DATA_MASK
    .ORG GAME_NAME_INDEX_ADDR
    INCLUDE "build/game_list_bank.asm"

    .BANK NAME_TABLE_DATA_BANK & BANK_DATA_MASK
    .ORG NAME_TABLE_DATA_ADDR
    INCBIN "build/game_name_table.bin"

; The design's sprites: Y, tile, attribute, X. The list may hold fewer than SPRITE_TILE_SIZE, which
; counts those above the screen too; hidden sprites stand in for the missing ones.
    .BANK SPRITE_TILE_BANK & BANK_DATA_MASK
    .ORG SPRITE_TILE_ADDR
    INCLUDE "build/game_sprite_list.asm"
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8
    .DB $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8, $F8,$00,$00,$F8

; ---------------------------------------------------------------------------------------------
; Resident code: the last bank at $E000, whatever is mapped at $8000
; ---------------------------------------------------------------------------------------------

    .BANK RESET_BANK & BANK_DATA_MASK
    .ORG RESET_ADDR

; SwitchMainBank: maps the program at $8000. Clobbers A.
SwitchMainBank:
    LDA #PROGRAM_BANK & BANK_DATA_MASK
    ; falls through

; SwitchBank8000: maps the bank in A at $8000. Clobbers A.
SwitchBank8000:
    STA <Bank_Buf_8000
    LDA #6
    STA MMC3_BANK_CTRL
    LDA <Bank_Buf_8000
    STA MMC3_BANK_DATA
    RTS

; SwitchBankA000: maps the bank in A at $A000. Clobbers A.
SwitchBankA000:
    STA <Bank_Buf_A000
    LDA #7
    STA MMC3_BANK_CTRL
    LDA <Bank_Buf_A000
    STA MMC3_BANK_DATA
    RTS

; Sund_Bank_Init: notes the two switchable banks of the music set. Clobbers A.
Sund_Bank_Init:
    LDA #SOUND_DATA_BANK_0 & BANK_DATA_MASK
    STA <Music_Bank_8000
    LDA #SOUND_DATA_BANK_1 & BANK_DATA_MASK
    STA <Music_Bank_A000
    RTS

    .IF MENU_MUSIC >= 2

; Sund_Bank_Set: maps the music set at $8000 and $A000. Clobbers A.
Sund_Bank_Set:
    LDA <Music_Bank_8000
    JSR SwitchBank8000
    LDA <Music_Bank_A000
    JMP SwitchBankA000

; Sound_Init: starts the song or effect in A, counted from 0. Clobbers A, X, Y.
Sound_Init:
    PHA
    JSR Sund_Bank_Set
    PLA
    JSR Sound_Init_Src
    JMP SwitchMainBank

; Sound_Play: one frame of music. Clobbers A, X, Y.
Sound_Play:
    JSR Sund_Bank_Set
    JSR Sound_Play_Src
    JMP SwitchMainBank

    .ENDIF

; MainLoop: the NMI does everything.
MainLoop:
    JMP MainLoop

; NmiProgram: once per frame, at the start of the vertical blank. It may interrupt itself: the
; wait after START runs inside it.
NmiProgram:
    PHA
    TXA
    PHA
    TYA
    PHA
    LDA PPU_STATUS
    JSR SwitchMainBank
    JSR NmiProgramProcess
    .IF MENU_MUSIC >= 2
    JSR Sound_Play
    .ENDIF
    PLA
    TAY
    PLA
    TAX
    PLA
IrqProgram:
    RTI

; MenuSizeData: what the board's registers get at reset. On COOLBOY and MINDKIDS it confines the
; processor to the end of the first 512 KB of the flash; on COOLGIRL it maps the first 128 KB.
MenuSizeData:
    .IF BOARD_TYPE = MULTICATR_TYPE_COOLGIRL
MENU_SIZE_DATA_SIZE     = 8
    .DB 0,0,%01111000,0,0,0,%00010100,%00000111
    .ELSE
MENU_SIZE_DATA_SIZE     = 4
    .IF MENU_PRG_SIZE = 8
    .DB %11000011,%10000000,0,0
    .ENDIF
    .IF MENU_PRG_SIZE = 16
    .DB %10000010,%10000000,0,0
    .ENDIF
    .IF MENU_PRG_SIZE = 32
    .DB %10000000,0,0,0
    .ENDIF
    .ENDIF

; ResetProgram: from power-on to the program bank.
ResetProgram:
    SEI
    CLD
    LDA #0
    STA PPU_CTRL
    STA PPU_STATUS
    STA PPU_MASK
    STA APU_STATUS
    STA PPU_SCROLL
    STA PPU_SCROLL
    STA MMC3_PRG_RAM_PROTECT    ; off: on COOLBOY the registers lie in work RAM's place, and a game
    LDA #$C0                    ; that a reset ends has left its save there
    STA JOY2_FRAME              ; no interrupt from the frame counter
    LDX #0
.Register:
    LDA MenuSizeData,X
    STA GAME_REG_0,X
    INX
    CPX #MENU_SIZE_DATA_SIZE
    BNE .Register
    LDX #$FF
    TXS
    JSR SwitchMainBank
    JMP ProgramBegin

    .ORG $FFFA
    .DW NmiProgram,ResetProgram,IrqProgram
