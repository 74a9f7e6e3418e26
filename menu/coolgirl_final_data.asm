; Start of a game on COOLGIRL. The builder has worked out what the outer registers get;
; the console copies it. Included by menu.asm at the end of the program bank.
;
; The registers move the flash under the processor's feet, so the routines that write them run in
; RAM. They are assembled here and copied there: inside them only relative branches will do.
;
; A game's record, 12 bytes: CHR offset in 8 KB as a word; CHR count in 8 KB; flags; Reg0 to Reg7
; with which it runs, lock bit included.
;
; With FINAL_DATA_ENABLE 0 coolgirl.asm includes this file for SelectGameProc alone.

    .IF FINAL_DATA_ENABLE

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

; GetGameConfig: reads the record of the game Sel_Cur. The mirroring is in its registers.
; Gives Game_Chr_Offset, Game_Chr_Size, Game_Flags and the registers. Clobbers A, X, Y and scratch.
GetGameConfig:
    JSR OpenGameRecord
    LDA [FC_Data_L],Y
    STA <Game_Chr_Offset_L
    STA <Game_Reg_1_For_Chr
    INY
    LDA [FC_Data_L],Y
    STA <Game_Chr_Offset_H
    STA <Game_Reg_0_For_Chr
    INY
    LDA [FC_Data_L],Y
    STA <Game_Chr_Size
    INY
    LDA [FC_Data_L],Y
    STA <Game_Flags
    LSR <Game_Reg_0_For_Chr     ; the registers count in 16 KB
    ROR <Game_Reg_1_For_Chr
    LDX #0
.ForPrg:
    INY
    LDA [FC_Data_L],Y
    STA <Game_Reg_0_For_Prg,X
    INX
    CPX #8
    BNE .ForPrg
    RTS

    .ENDIF

; SelectGameProc: runs at SELECT_ADDR. Brings the game's CHR into view, copies it to CHR RAM, brings
; its PRG into view and goes on at SELECT_CLEAR_ADDR, or with FINAL_DATA_ENABLE 0 at once with the
; game. Uses no stack.
SelectGameProc:
    LDX #0
.ForChr:
    LDA <Game_Reg_0_For_Chr,X   ; Reg2 to Reg5 are 0, which lifts the PRG mask
    STA GAME_REG_0,X
    INX
    CPX #6
    BNE .ForChr
    LDY #0
    STY <FC_Data_Tmp            ; source bank, counted from the first one
    STY <FC_Data_Cnt            ; 8 KB of CHR done
.Bank:
    LDA #6
    STA MMC3_BANK_CTRL
    LDA <Game_Chr_Offset_L      ; an odd offset begins in the second half of the 16 KB
    AND #1
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
    TAX
.ForPrg:
    LDA <Game_Reg_0_For_Prg,X   ; the lock bit comes with the last write
    STA GAME_REG_0,X
    INX
    CPX #8
    BNE .ForPrg
    .IF FINAL_DATA_ENABLE
    JMP SELECT_CLEAR_ADDR
    .ELSE
    JMP [$FFFC]
    .ENDIF
SelectGameProcEnd:
SELECT_GAME_PROC_SIZE = SelectGameProcEnd - SelectGameProc

    .IF FINAL_DATA_ENABLE

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

    .ENDIF
