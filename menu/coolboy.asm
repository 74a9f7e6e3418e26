; Start of a game on COOLBOY and MINDKIDS for a hand-made configuration with FINAL_DATA_ENABLE 0:
; the records hold the plain facts of a game, and the console works out the outer registers. Included
; by menu.asm at the end of the program bank.
;
; A game's record, 8 bytes: PRG offset in 8 KB as a word; PRG size in 16 KB; CHR offset in 8 KB as a
; word; CHR size in 8 KB; flags; mapper.
;
; What the registers take (A13 and up are bits of the flash address):
;   Reg0  7: bit 5 of the CHR size, inverted; 6: mask of A17; 5-4: A24, A23; 2-0: A19 to A17
;   Reg1  7: mask of A18; 6: mask of A19; 5: mask of A20; 4: A20; 3: A22; 2: A21
;   Reg2  0
;   Reg3  7: lock; 4: NROM; 3-1: A16 to A14; 0: A13, for CHR only

; SelectGame: starts the game Sel_Cur. Never returns; what the NMI has on the stack is dropped.
SelectGame:
    JSR GetGameConfig
    JSR SelectGameDark
    JSR CopySelectGameProc
    LDA #0                      ; what is worked out below starts at 0
    LDX #GAME_SELECT_TEMP_SIZE - 1
.Clear:
    STA <Game_Temp_Reg_Addr,X
    DEX
    BPL .Clear

    LDX #Prg_Reg_0 - Chr_Reg_0
    LDY #0
    JSR PackOffset
    LDA <Prg_Reg_3
    AND #%00001110              ; PRG begins on 16 KB
    STA <Prg_Reg_3
    LDA <Game_Prg_Size
    LSR A
    LSR A
    LSR A
    LSR A
    TAY
    LDA ROM_Size_Mask,Y
    STA <Prg_Size
    JSR PackMask
    LDA <Prg_Size
    AND #%00001000
    ASL A
    ASL A
    ORA <Prg_Reg_1
    STA <Prg_Reg_1

    LDX #0
    LDY #Game_Chr_Offset_L - Game_Prg_Offset_L
    JSR PackOffset
    LDA <Game_Chr_Size
    LSR A
    LSR A
    LSR A
    LSR A
    LSR A
    TAY
    LDA ROM_Size_Mask,Y
    STA <Chr_Size
    JSR PackMask
    ; The mask of A20 goes to bit 1, not to bit 5 as that of PRG does. This is on purpose, and no game
    ; meets it: only 2 MB have that mask, and a byte of CHR size ends 8 KB below.
    LDA <Chr_Size
    AND #%00001000
    LSR A
    LSR A
    ORA <Chr_Reg_1
    STA <Chr_Reg_1
    LDA <Game_Chr_Size
    AND #%00100000
    BNE .Chr256
    LDA <Prg_Reg_0
    ORA #%10000000
    STA <Prg_Reg_0
.Chr256:
    LDA <Game_Chr_Size
    STA <Chr_Size

    LDA <Game_Flags
    AND #1
    EOR #1                      ; the board counts horizontal as 1
    STA MMC3_MIRRORING
    LDA <Game_Mapper
    BNE .Banked
    JSR SetNromData
.Banked:
    LDA #0
    STA PPU_CTRL
    STA PPU_MASK
    STA MMC3_PRG_RAM_PROTECT    ; no work RAM in the registers' place
    JMP SELECT_ADDR

; PackOffset: spreads a flash offset over registers 0, 1 and 3, which are 0 before.
; Takes in X the distance of the four registers from Chr_Reg_0, in Y that of the offset, in 8 KB
; units, from Game_Prg_Offset. Clobbers A and FC_Word.
PackOffset:
    LDA Game_Prg_Offset_H,Y
    STA <FC_Word_H
    LDA Game_Prg_Offset_L,Y
    STA <FC_Word_L
    AND #%00001111
    STA <Chr_Reg_3,X
    LSR <FC_Word_H              ; from here on in 16 KB
    ROR <FC_Word_L
    LDA <FC_Word_L
    LSR A
    LSR A
    STA <Chr_Reg_1,X            ; A20 in its place, for the moment with its neighbours
    LSR A
    AND #%00000111              ; A19 to A17
    STA <Chr_Reg_0,X
    LDA <Chr_Reg_1,X
    AND #%00010000
    STA <Chr_Reg_1,X
    LDA <FC_Word_L
    AND #%10000000              ; A21
    BEQ .A22
    LDA #%00000100
    ORA <Chr_Reg_1,X
    STA <Chr_Reg_1,X
.A22:
    ASL <FC_Word_H
    ASL <FC_Word_H
    ASL <FC_Word_H
    LDA <FC_Word_H
    AND #%00001000
    ORA <Chr_Reg_1,X
    STA <Chr_Reg_1,X
    LDA <FC_Word_H
    AND #%00110000              ; A24, A23
    ORA <Chr_Reg_0,X
    STA <Chr_Reg_0,X
    RTS

; PackMask: puts the masks of A17, A18 and A19 into registers 0 and 1.
; Takes a byte of ROM_Size_Mask in A and X as PackOffset does. Clobbers A and FC_Data_Tmp.
PackMask:
    STA <FC_Data_Tmp
    LSR <FC_Data_Tmp
    BCC .A18
    LDA #%01000000
    ORA <Chr_Reg_0,X
    STA <Chr_Reg_0,X
.A18:
    LSR <FC_Data_Tmp
    BCC .A19
    LDA #%10000000
    ORA <Chr_Reg_1,X
    STA <Chr_Reg_1,X
.A19:
    LSR <FC_Data_Tmp
    BCC .Return
    LDA #%01000000
    ORA <Chr_Reg_1,X
    STA <Chr_Reg_1,X
.Return:
    RTS

; SetNromData: an NROM game sees 16 or 32 KB of PRG at once, which register 3 selects instead of the
; MMC3's banks; bit 1 of register 1 tells 32 KB. Its CHR is read the same way. Clobbers A.
SetNromData:
    LDA <Game_Prg_Size
    AND #%11111110
    ORA <Prg_Reg_1
    AND #%00011111
    ORA #%10000000
    STA <Prg_Reg_1
    LDA <Prg_Reg_0
    ORA #%11000000
    STA <Prg_Reg_0
    LDA <Prg_Reg_3
    ORA #%00010000
    STA <Prg_Reg_3
    LDA <Chr_Reg_0
    ORA #%11000000
    STA <Chr_Reg_0
    LDA <Chr_Reg_1
    AND #%00011111
    ORA #%10000000
    STA <Chr_Reg_1
    LDA <Chr_Reg_3
    ORA #%00010000
    STA <Chr_Reg_3
    RTS

; SelectGameProc: runs at SELECT_ADDR, because it moves the flash under the processor: inside it only
; relative branches will do. Brings the game's CHR into view, copies it to CHR RAM, brings its PRG
; into view and starts it. RAM stays as it is. Uses no stack.
SelectGameProc:
    LDA <Chr_Reg_0
    STA GAME_REG_0
    LDA <Chr_Reg_1
    STA GAME_REG_1
    LDA <Chr_Reg_2
    STA GAME_REG_2
    LDA <Chr_Reg_3
    STA GAME_REG_3
    AND #%00001111
    STA <FC_Data_Tmp            ; source bank
    LDY #0
    STY <FC_Data_Cnt            ; 8 KB of CHR done
.Bank:
    LDA #6
    STA MMC3_BANK_CTRL
    LDA <FC_Data_Tmp
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
    LDA PPU_STATUS
    LDY #0
    STY PPU_ADDRESS
    STY PPU_ADDRESS
    STY <FC_Data_L
    LDX #$80
    LDA <Chr_Reg_3              ; an NROM game sees 16 KB at once: odd 8 KB lie at $A000
    AND #%00010001
    CMP #%00010001
    BNE .Source
    LDX #$A0
.Source:
    STX <FC_Data_H
    LDA <Chr_Size
    BEQ .Copied                 ; all done, or the game has CHR RAM
    LDX #$20
.Byte:
    LDA [FC_Data_L],Y
    STA PPU_DATA
    INY
    BNE .Byte
    INC <FC_Data_H
    DEX
    BNE .Byte
    DEC <Chr_Size
    INC <FC_Data_Tmp
    INC <FC_Data_Cnt            ; never 0: it counts as many as the size had
    BNE .Bank
.Copied:
    LDA <Prg_Reg_0
    STA GAME_REG_0
    LDA <Prg_Reg_1
    STA GAME_REG_1
    LDA <Prg_Reg_2
    STA GAME_REG_2
    LDA <Prg_Reg_3
    ORA #$80                    ; the lock bit comes with the last write
    STA GAME_REG_3
    LDA #$80
    STA MMC3_PRG_RAM_PROTECT
    LDX #6
    STX MMC3_BANK_CTRL
    LDY #0
    STY MMC3_BANK_DATA
    INX
    STX MMC3_BANK_CTRL
    INY
    STY MMC3_BANK_DATA
    LDX #0
    LDY #0
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
    JMP [$FFFC]
SelectGameProcEnd:
SELECT_GAME_PROC_SIZE = SelectGameProcEnd - SelectGameProc
