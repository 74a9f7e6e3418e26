; Start of a game on COOLBOY and MINDKIDS. The builder has worked out what the outer registers get;
; the console copies it. Included by menu.asm at the end of the program bank.
;
; The registers move the flash under the processor's feet, so the routines that write them run in
; RAM. They are assembled here and copied there: inside them only relative branches will do.
;
; A game's record, 10 bytes: flags; CHR count in 8 KB; Reg0 to Reg3 with which its CHR is in view;
; Reg0 to Reg3 with which it runs, lock bit included.

; SelectGame: starts the game Sel_Cur. Never returns; what the NMI has on the stack is dropped.
SelectGame:
    JSR SelectGameDark
    LDA #0                      ; RAM $0100 to $07FF; page 0 holds Sel_Cur
    TAX
.Clear:
    STA $0100,X
    STA $0200,X
    STA $0300,X
    STA $0400,X
    STA $0500,X
    STA $0600,X
    STA $0700,X
    INX
    BNE .Clear

    JSR CopySelectGameProc
    JSR ClearGameRegisters
    JSR GetGameConfig

    LDX #0                      ; over the top of the stack: from here on nothing uses it
.CopyClear:
    LDA ClearRamProc,X
    STA SELECT_CLEAR_ADDR,X
    INX
    CPX #SELECT_GAME_PROC_CLEAR_RAM_SIZE
    BNE .CopyClear
    JMP SELECT_ADDR

; GetGameConfig: reads the record of the game Sel_Cur and sets the mirroring.
; Gives Game_Flags, Game_Chr_Size and the registers. Clobbers A, X, Y and scratch.
GetGameConfig:
    JSR OpenGameRecord
    LDA [FC_Data_L],Y
    STA <Game_Flags
    AND #1
    EOR #1                      ; the board counts horizontal as 1
    STA MMC3_MIRRORING
    INY
    LDA [FC_Data_L],Y
    STA <Game_Chr_Size
    LDX #0
.ForChr:
    INY
    LDA [FC_Data_L],Y
    STA <Game_Reg_0_For_Chr,X
    INX
    CPX #4
    BNE .ForChr
    LDX #0
.ForPrg:
    INY
    LDA [FC_Data_L],Y
    STA <Game_Reg_0_For_Prg,X
    INX
    CPX #4
    BNE .ForPrg
    RTS

; SelectGameProc: runs at SELECT_ADDR. Brings the game's CHR into view, copies it to CHR RAM, brings
; its PRG into view and goes on at SELECT_CLEAR_ADDR. Uses no stack.
SelectGameProc:
    LDA <Game_Reg_0_For_Chr
    STA GAME_REG_0
    LDA <Game_Reg_1_For_Chr
    STA GAME_REG_1
    LDA <Game_Reg_2_For_Chr
    STA GAME_REG_2
    LDA <Game_Reg_3_For_Chr
    STA GAME_REG_3
    LDY #0
    STY <FC_Data_Tmp            ; source bank, counted from the first one
    STY <FC_Data_Cnt            ; 8 KB of CHR done
.Bank:
    LDA #6
    STA MMC3_BANK_CTRL
    LDA <Game_Reg_3_For_Chr
    AND #%00001111
    CLC
    ADC <FC_Data_Tmp
    STA MMC3_BANK_DATA
    LDA <FC_Data_Cnt            ; the 8 KB of CHR RAM that follow: R0 and R1 take 2 KB each, R2 to
    ASL A                       ; R5 one
    ASL A
    ASL A
    TAY
    LDX #0
.ChrReg:
    STX MMC3_BANK_CTRL
    STY MMC3_BANK_DATA
    INY
    CPX #2
    BCS .ChrNext
    INY
.ChrNext:
    INX
    CPX #6
    BNE .ChrReg
    LDX #$80
    LDA <Game_Reg_3_For_Chr     ; an NROM game sees 16 KB at once: odd 8 KB lie at $A000
    AND #%00010001
    CMP #%00010001
    BNE .Source
    LDX #$A0
.Source:
    STX <FC_Data_H
    LDY #0
    STY <FC_Data_L
    LDA <Game_Chr_Size
    BEQ .Copied                 ; the game has CHR RAM
    LDA PPU_STATUS
    STY PPU_ADDRESS
    STY PPU_ADDRESS
    LDX #$20
.Byte:
    LDA [FC_Data_L],Y
    STA PPU_DATA
    INY
    BNE .Byte
    INC <FC_Data_H
    DEX
    BNE .Byte
    INC <FC_Data_Tmp
    INC <FC_Data_Cnt
    LDA <FC_Data_Cnt
    CMP <Game_Chr_Size
    BCC .Bank
.Copied:
    LDA #6
    STA MMC3_BANK_CTRL
    LDA #0
    STA MMC3_BANK_DATA
    LDX #7
    STX MMC3_BANK_CTRL
    LDX #1
    STX MMC3_BANK_DATA
    TAY
    TAX
.RunReg:
    STX MMC3_BANK_CTRL
    STY MMC3_BANK_DATA
    INY
    CPX #2
    BCS .RunNext
    INY
.RunNext:
    INX
    CPX #6
    BNE .RunReg
    LDA <Game_Reg_0_For_Prg
    STA GAME_REG_0
    LDA <Game_Reg_1_For_Prg
    STA GAME_REG_1
    LDA <Game_Reg_2_For_Prg
    STA GAME_REG_2
    LDA <Game_Reg_3_For_Prg     ; the lock bit comes with the last write
    STA GAME_REG_3
    LDA #$80
    STA MMC3_PRG_RAM_PROTECT
    JMP SELECT_CLEAR_ADDR
SelectGameProcEnd:
SELECT_GAME_PROC_SIZE = SelectGameProcEnd - SelectGameProc

; ClearRamProc: runs at SELECT_CLEAR_ADDR. Clears RAM except the stack page and starts the game.
ClearRamProc:
    LDA #0
    TAX
.Next:
    STA <$00,X
    STA $0200,X
    STA $0300,X
    STA $0400,X
    STA $0500,X
    STA $0600,X
    STA $0700,X
    INX
    BNE .Next
    JMP [$FFFC]
ClearRamProcEnd:
SELECT_GAME_PROC_CLEAR_RAM_SIZE = ClearRamProcEnd - ClearRamProc
