; CNROM with 32 KB of PRG ROM and 32 KB of CHR ROM in four banks (mapper 3). A write to $8000 to
; $FFFF selects the 8 KB of CHR; ROM and program drive the data lines together, so it goes to a
; place that holds the same value (NESdev wiki, CNROM and Bus conflict).
;
; When the check is done the coin turns: each of the four banks holds one picture of it, and the
; program only switches banks.

 .INESPRG 2
 .INESCHR 4
 .INESMAP 3
 .INESMIR 1

SAMPLE_ID = 4
PRG_BANKS = 4
PRG_STEPS = 4
CHR_BANKS = 32
CHR_STEPS = 32
MIRROR_STEPS = 1
WORK_RAM = 0
COIN_TILE = $80
FRAMES_PER_PICTURE = 8

 INCLUDE "common/hardware.asm"
 INCLUDE "common/marks.asm"

 .RSSET Own_Ram
Picture .RS 1

 PRG_BANK 0, $8000
 PRG_BANK 1, $A000
 PRG_BANK 2, $C000
 PRG_BANK 3, $E000
 INCLUDE "common/start.asm"
 INCLUDE "common/checks.asm"
 INCLUDE "common/texts.asm"
 INCLUDE "common/report.asm"
 INCLUDE "common/fixed_prg.asm"

Running:
 JSR DrawReport
 JSR PlaceCoins
 LDA #0
 JSR SelectChr
 JSR LightScreen
 LDA #$88 ; the same with the NMI
 STA PPU_CTRL
.stay
 LDA <Frame
.wait
 CMP <Frame
 BEQ .wait
 LDA <Frame
 AND #FRAMES_PER_PICTURE - 1
 BNE .stay
 INC <Picture
 LDA <Picture
 AND #$03
 ASL A
 ASL A
 ASL A
 JSR SelectChr
 JMP .stay

; Coins of 4 by 4 sprites in the free part of the panel.
PlaceCoins:
 LDX #0
 LDA #102
.line
 STA <Line
 LDY #0
.sprite
 LDA <Line
 STA Sprites,X
 STA Sprites + $40,X
 TXA
 LSR A
 LSR A
 ORA #COIN_TILE
 STA Sprites + 1,X
 STA Sprites + $41,X
 LDA #0
 STA Sprites + 2,X
 STA Sprites + $42,X
 LDA CoinColumns,Y
 STA Sprites + 3,X
 CLC
 ADC #56
 STA Sprites + $43,X
 INX
 INX
 INX
 INX
 INY
 CPY #4
 BNE .sprite
 LDA <Line
 CLC
 ADC #8
 CPX #$40
 BNE .line
 RTS

CoinColumns:
 .DB 84, 92, 100, 108

MapperReset:
CheckOwn:
 RTS

; 8 KB bank n / 8; within it bank n lies at (n modulo 8) * $400
SelectChr:
 TAY
 LSR A
 LSR A
 LSR A
 TAX
 STA FourNumbers,X
 TYA
 AND #$07
 ASL A
 ASL A
 RTS

FourNumbers:
 .DB 0, 1, 2, 3

SelectMirroring:
 LDA #MIRROR_VERTICAL
 RTS

ReportTexts:
 .DB $20, $47
 .STR "CNROM BANK CHECK"
 .DB $20, $83
 .STR "MAPPER 3   PRG 32  CHR 32"
 .DB $20, $E4
 .STR "PRG"
 .DB $21, $24
 .STR "CHR"
 .DB 0
ReportPalette:
 .DB $0F, $30, $2A, $16, $0F, $37, $27, $17, $0F, $3A, $2A, $1A, $0F, $36, $16, $06
 .DB $0F, $38, $28, $17, $0F, $30, $28, $18, $0F, $30, $28, $18, $0F, $30, $28, $18

Nmi:
 INC <Frame
Ignore:
 RTI

 .ORG $FFFA
 .DW Nmi, Reset, Ignore

 CHR_BANK 0, "coin_0.bin"
 CHR_BANK 1, "coin_1.bin"
 CHR_BANK 2, "coin_2.bin"
 CHR_BANK 3, "coin_3.bin"
