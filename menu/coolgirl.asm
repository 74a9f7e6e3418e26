; Start of a game on COOLGIRL for a hand-made configuration with FINAL_DATA_ENABLE 0: the records hold
; the plain facts of a game, and the console works out the outer registers. Included by menu.asm at
; the end of the program bank.
;
; A game's record, 8 bytes: PRG offset in 8 KB as a word; PRG size in 16 KB; CHR offset in 8 KB as a
; word; CHR size in 8 KB; flags; mapper.
;
; What the registers take:
;   Reg0, Reg1  base of PRG in 16 KB, high and low
;   Reg2  7: top bit of the mask of CHR; 6-0: mask of PRG
;   Reg3  7-5: PRG banking mode
;   Reg4  7-5: CHR banking mode; 4-0: mask of CHR
;   Reg5  for mapper 42 alone
;   Reg6  7-5: flags of the mapper; 4-0: its code
;   Reg7  7: lock; 6: top bit of the code; 5: four-screen; 3: horizontal mirroring; 1: CHR RAM may be
;         written; 0: work RAM

; SelectGame: starts the game Sel_Cur. Never returns; what the NMI has on the stack is dropped.
SelectGame:
    JSR GetGameConfig
    JSR SelectGameDark
    JSR CopySelectGameProc
    JSR ClearGameRegisters
    JSR SetGameMapperConfig
    JSR SetGameTempRegForChr
    JSR SetGameTempRegForPrg
    JMP SELECT_ADDR

; SetGameMapperConfig: looks up how the board becomes Game_Mapper; a mapper without a row, 74 among
; them, is taken for an MMC3. Gives Game_Mapper_Code, Game_Mapper_Flag, Game_Prg_Banking_Mode and
; Game_Chr_Banking_Mode. Clobbers A, X, Y and FC_Data.
SetGameMapperConfig:
    LDX #0
.Row:
    LDA CoolGirlMapperConfigIndex,X
    CMP #$FF
    BEQ .Default
    CMP <Game_Mapper
    BEQ .Found
    INX
    INX
    INX
    BNE .Row                    ; the table is shorter than 256 bytes
.Default:
    LDX #CoolGirlMapperConfigDefault - CoolGirlMapperConfigIndex
.Found:
    LDA CoolGirlMapperConfigIndex + 1,X
    STA <FC_Data_L
    LDA CoolGirlMapperConfigIndex + 2,X
    STA <FC_Data_H
    LDY #3
.Byte:
    LDA [FC_Data_L],Y
    STA Game_Mapper_Code,Y
    DEY
    BPL .Byte
    RTS

; SetGameTempRegForChr: works out the registers that bring CHR into view. Clobbers A.
SetGameTempRegForChr:
    LDA <Game_Chr_Offset_H
    LSR A                       ; the registers count in 16 KB
    STA <Game_Reg_0_For_Chr
    LDA <Game_Chr_Offset_L
    ROR A
    STA <Game_Reg_1_For_Chr
    LDA #%00000010
    ORA <Game_Reg_7_For_Prg
    STA <Game_Reg_7_For_Prg
    RTS

; SetGameTempRegForPrg: works out the registers with which the game runs. Clobbers A, FC_Data_Tmp.
SetGameTempRegForPrg:
    LDA <Game_Prg_Offset_H
    LSR A
    ORA <Game_Reg_0_For_Prg
    STA <Game_Reg_0_For_Prg
    LDA <Game_Prg_Offset_L
    ROR A                       ; the carry is that of the shift above
    ORA <Game_Reg_1_For_Prg
    STA <Game_Reg_1_For_Prg

    SEC
    LDA #$80
    SBC <Game_Prg_Size
    ORA <Game_Reg_2_For_Prg
    STA <Game_Reg_2_For_Prg
    SEC
    LDA #$40
    SBC <Game_Chr_Size
    STA <FC_Data_Tmp
    AND #%00100000
    ASL A
    ASL A
    ORA <Game_Reg_2_For_Prg
    STA <Game_Reg_2_For_Prg
    LDA <FC_Data_Tmp
    AND #%00011111
    ORA <Game_Reg_4_For_Prg
    STA <Game_Reg_4_For_Prg

    LDA <Game_Mapper_Code
    AND #%00011111
    ORA <Game_Reg_6_For_Prg
    STA <Game_Reg_6_For_Prg
    LDA <Game_Mapper_Code
    AND #%00100000
    ASL A
    ORA <Game_Reg_7_For_Prg
    STA <Game_Reg_7_For_Prg
    LDA <Game_Prg_Banking_Mode
    JSR MoveToTop
    ORA <Game_Reg_3_For_Prg
    STA <Game_Reg_3_For_Prg
    LDA <Game_Chr_Banking_Mode
    JSR MoveToTop
    ORA <Game_Reg_4_For_Prg
    STA <Game_Reg_4_For_Prg

    LDA <Game_Flags
    AND #1
    EOR #1                      ; the board counts horizontal as 1
    ASL A
    ASL A
    ASL A
    ORA <Game_Reg_7_For_Prg
    STA <Game_Reg_7_For_Prg
    LDA <Game_Flags             ; the battery's bit is not used: work RAM is always there
    AND #%00000100
    ASL A
    ASL A
    ASL A
    ORA <Game_Reg_7_For_Prg
    STA <Game_Reg_7_For_Prg
    LDA <Game_Mapper_Flag
    JSR MoveToTop
    ORA <Game_Reg_6_For_Prg
    STA <Game_Reg_6_For_Prg
    JSR SetChrRamWrite
    JSR SetFDSPrgBank42
    LDA #%10000001              ; lock, work RAM
    ORA <Game_Reg_7_For_Prg
    STA <Game_Reg_7_For_Prg
    RTS

; MoveToTop: moves bits 2 to 0 of A to bits 7 to 5; the rest is 0.
MoveToTop:
    ROR A
    ROR A
    ROR A
    ROR A
    AND #%11100000
    RTS

; SetChrRamWrite: lets a game without CHR, or of mapper 74, which has both kinds, write its CHR RAM;
; that of all others is what was copied there and stays as it is. Clobbers A.
SetChrRamWrite:
    LDA <Game_Chr_Size
    BEQ .Open
    LDA <Game_Mapper
    CMP #74
    BEQ .Open
    LDA <Game_Reg_7_For_Prg
    AND #%11111101
    STA <Game_Reg_7_For_Prg
    RTS
.Open:
    LDA <Game_Reg_7_For_Prg
    ORA #%00000010
    STA <Game_Reg_7_For_Prg
    RTS

; SetFDSPrgBank42: mapper 42, games moved over from disk, has a fifth bank of PRG. Clobbers A.
SetFDSPrgBank42:
    LDA <Game_Mapper
    CMP #42
    BNE .Return
    LDA <Game_Reg_5_For_Prg
    ORA #%01111100
    STA <Game_Reg_5_For_Prg
.Return:
    RTS

    INCLUDE "coolgirl_final_data.asm"

; A mapper and where its configuration lies; the number $FF ends the table.
CoolGirlMapperConfigIndex:
    .DB 000,LOW(CoolGirlMapperConfig_000),HIGH(CoolGirlMapperConfig_000)
    .DB 001,LOW(CoolGirlMapperConfig_001),HIGH(CoolGirlMapperConfig_001)
    .DB 002,LOW(CoolGirlMapperConfig_002),HIGH(CoolGirlMapperConfig_002)
    .DB 003,LOW(CoolGirlMapperConfig_003),HIGH(CoolGirlMapperConfig_003)
CoolGirlMapperConfigDefault:
    .DB 004,LOW(CoolGirlMapperConfig_004),HIGH(CoolGirlMapperConfig_004)
    .DB 005,LOW(CoolGirlMapperConfig_005),HIGH(CoolGirlMapperConfig_005)
    .DB 007,LOW(CoolGirlMapperConfig_007),HIGH(CoolGirlMapperConfig_007)
    .DB 009,LOW(CoolGirlMapperConfig_009),HIGH(CoolGirlMapperConfig_009)
    .DB 010,LOW(CoolGirlMapperConfig_010),HIGH(CoolGirlMapperConfig_010)
    .DB 011,LOW(CoolGirlMapperConfig_011),HIGH(CoolGirlMapperConfig_011)
    .DB 018,LOW(CoolGirlMapperConfig_018),HIGH(CoolGirlMapperConfig_018)
    .DB 021,LOW(CoolGirlMapperConfig_021),HIGH(CoolGirlMapperConfig_021)
    .DB 022,LOW(CoolGirlMapperConfig_022),HIGH(CoolGirlMapperConfig_022)
    .DB 023,LOW(CoolGirlMapperConfig_023),HIGH(CoolGirlMapperConfig_023)
    .DB 025,LOW(CoolGirlMapperConfig_025),HIGH(CoolGirlMapperConfig_025)
    .DB 030,LOW(CoolGirlMapperConfig_030),HIGH(CoolGirlMapperConfig_030)
    .DB 032,LOW(CoolGirlMapperConfig_032),HIGH(CoolGirlMapperConfig_032)
    .DB 033,LOW(CoolGirlMapperConfig_033),HIGH(CoolGirlMapperConfig_033)
    .DB 034,LOW(CoolGirlMapperConfig_034),HIGH(CoolGirlMapperConfig_034)
    .DB 036,LOW(CoolGirlMapperConfig_036),HIGH(CoolGirlMapperConfig_036)
    .DB 038,LOW(CoolGirlMapperConfig_038),HIGH(CoolGirlMapperConfig_038)
    .DB 042,LOW(CoolGirlMapperConfig_042),HIGH(CoolGirlMapperConfig_042)
    .DB 048,LOW(CoolGirlMapperConfig_048),HIGH(CoolGirlMapperConfig_048)
    .DB 065,LOW(CoolGirlMapperConfig_065),HIGH(CoolGirlMapperConfig_065)
    .DB 066,LOW(CoolGirlMapperConfig_066),HIGH(CoolGirlMapperConfig_066)
    .DB 067,LOW(CoolGirlMapperConfig_067),HIGH(CoolGirlMapperConfig_067)
    .DB 069,LOW(CoolGirlMapperConfig_069),HIGH(CoolGirlMapperConfig_069)
    .DB 070,LOW(CoolGirlMapperConfig_070),HIGH(CoolGirlMapperConfig_070)
    .DB 071,LOW(CoolGirlMapperConfig_071),HIGH(CoolGirlMapperConfig_071)
    .DB 073,LOW(CoolGirlMapperConfig_073),HIGH(CoolGirlMapperConfig_073)
    .DB 075,LOW(CoolGirlMapperConfig_075),HIGH(CoolGirlMapperConfig_075)
    .DB 078,LOW(CoolGirlMapperConfig_078),HIGH(CoolGirlMapperConfig_078)
    .DB 079,LOW(CoolGirlMapperConfig_079),HIGH(CoolGirlMapperConfig_079)
    .DB 083,LOW(CoolGirlMapperConfig_083),HIGH(CoolGirlMapperConfig_083)
    .DB 087,LOW(CoolGirlMapperConfig_087),HIGH(CoolGirlMapperConfig_087)
    .DB 089,LOW(CoolGirlMapperConfig_089),HIGH(CoolGirlMapperConfig_089)
    .DB 090,LOW(CoolGirlMapperConfig_090),HIGH(CoolGirlMapperConfig_090)
    .DB 093,LOW(CoolGirlMapperConfig_093),HIGH(CoolGirlMapperConfig_093)
    .DB 097,LOW(CoolGirlMapperConfig_097),HIGH(CoolGirlMapperConfig_097)
    .DB 112,LOW(CoolGirlMapperConfig_112),HIGH(CoolGirlMapperConfig_112)
    .DB 118,LOW(CoolGirlMapperConfig_118),HIGH(CoolGirlMapperConfig_118)
    .DB 133,LOW(CoolGirlMapperConfig_133),HIGH(CoolGirlMapperConfig_133)
    .DB 146,LOW(CoolGirlMapperConfig_146),HIGH(CoolGirlMapperConfig_146)
    .DB 152,LOW(CoolGirlMapperConfig_152),HIGH(CoolGirlMapperConfig_152)
    .DB 163,LOW(CoolGirlMapperConfig_163),HIGH(CoolGirlMapperConfig_163)
    .DB 184,LOW(CoolGirlMapperConfig_184),HIGH(CoolGirlMapperConfig_184)
    .DB 189,LOW(CoolGirlMapperConfig_189),HIGH(CoolGirlMapperConfig_189)
    .DB 206,LOW(CoolGirlMapperConfig_206),HIGH(CoolGirlMapperConfig_206)
    .DB 228,LOW(CoolGirlMapperConfig_228),HIGH(CoolGirlMapperConfig_228)
    .DB 241,LOW(CoolGirlMapperConfig_241),HIGH(CoolGirlMapperConfig_241)
    .DB $FF

; Code, flags, PRG banking mode, CHR banking mode
CoolGirlMapperConfig_000: .DB %000000,0,0,0
CoolGirlMapperConfig_001: .DB %010000,0,0,0
CoolGirlMapperConfig_002: .DB %000001,0,0,0
CoolGirlMapperConfig_003: .DB %000010,0,0,0
CoolGirlMapperConfig_004: .DB %010100,0,4,2
CoolGirlMapperConfig_005: .DB %001111,0,4,7
CoolGirlMapperConfig_007: .DB %001000,0,7,0
CoolGirlMapperConfig_009: .DB %010001,0,4,5
CoolGirlMapperConfig_010: .DB %010001,1,0,5
CoolGirlMapperConfig_011: .DB %001010,0,7,0
CoolGirlMapperConfig_018: .DB %000111,0,4,7
CoolGirlMapperConfig_021: .DB %011000,0,4,7
CoolGirlMapperConfig_022: .DB %011000,3,4,7
CoolGirlMapperConfig_023: .DB %011000,4,4,7
CoolGirlMapperConfig_025: .DB %011000,5,4,7
CoolGirlMapperConfig_030: .DB %000001,0,0,0
CoolGirlMapperConfig_032: .DB %011010,0,4,7
CoolGirlMapperConfig_033: .DB %010110,0,4,2
CoolGirlMapperConfig_034: .DB %001000,1,7,0
CoolGirlMapperConfig_036: .DB %011101,0,7,0
CoolGirlMapperConfig_038: .DB %100000,0,7,0
CoolGirlMapperConfig_042: .DB %010111,0,7,0
CoolGirlMapperConfig_048: .DB %010110,1,4,2
CoolGirlMapperConfig_065: .DB %001110,0,4,7
CoolGirlMapperConfig_066: .DB %001011,0,7,0
CoolGirlMapperConfig_067: .DB %100100,0,0,6
CoolGirlMapperConfig_069: .DB %011001,0,4,7
CoolGirlMapperConfig_070: .DB %010010,0,0,0
CoolGirlMapperConfig_071: .DB %000001,1,0,0
CoolGirlMapperConfig_073: .DB %010011,0,0,0
CoolGirlMapperConfig_075: .DB %100010,0,4,4
CoolGirlMapperConfig_078: .DB %000011,0,0,0
CoolGirlMapperConfig_079: .DB %011011,0,7,0
CoolGirlMapperConfig_083: .DB %100011,0,4,7 ; a submapper is unproved
CoolGirlMapperConfig_087: .DB %001100,0,0,0
CoolGirlMapperConfig_089: .DB %100101,0,0,0
CoolGirlMapperConfig_090: .DB %001101,0,4,7
CoolGirlMapperConfig_093: .DB %000101,0,0,0
CoolGirlMapperConfig_097: .DB %000100,0,1,0 ; does not work yet
CoolGirlMapperConfig_112: .DB %010101,0,4,2
CoolGirlMapperConfig_118: .DB %010100,1,4,2
CoolGirlMapperConfig_133: .DB %011100,0,7,0
CoolGirlMapperConfig_146: .DB %011011,0,7,0
CoolGirlMapperConfig_152: .DB %010010,1,0,0 ; the builder's table has no flag here
CoolGirlMapperConfig_163: .DB %000110,0,7,0
CoolGirlMapperConfig_184: .DB %011111,0,0,4
CoolGirlMapperConfig_189: .DB %010100,2,7,2
CoolGirlMapperConfig_206: .DB %010100,4,4,2
CoolGirlMapperConfig_228: .DB %001001,0,7,0
CoolGirlMapperConfig_241: .DB %001000,1,7,0
