; MMC1 with 128 KB of PRG ROM, 64 KB of CHR ROM and 8 KB of battery RAM (mapper 1). The mapper's
; registers take their five bits one by one; the last 16 KB stay at $C000, 4 KB of CHR are switched
; at a time (NESdev wiki, MMC1). The check looks at every 4 KB of CHR in both windows and at all
; four arrangements of the name tables.
;
; What a real MMC1 maps at power-on isn't certain, so every 16 KB end in a piece of code that
; resets the mapper.

 .INESPRG 8
 .INESCHR 8
 .INESMAP 1
 .INESMIR 2 ; battery; the mapper sets the mirroring

SAMPLE_ID = 5
PRG_BANKS = 16
PRG_STEPS = 16
CHR_BANKS = 64
CHR_STEPS = 128 ; 64 at $0000, then 64 at $1000
MIRROR_STEPS = 4
WORK_RAM = 1

MMC1_CONTROL = $8000
MMC1_CHR_0 = $A000
MMC1_CHR_1 = $C000
MMC1_PRG = $E000
CONTROL_BANKS = %11100 ; 4 KB CHR, 16 KB PRG at $8000; the low bits set the mirroring

 INCLUDE "common/hardware.asm"
 INCLUDE "common/marks.asm"

; number of the second 8 KB of 16: with the way back to the last bank
MMC1_WAY_BACK .MACRO
 .BANK \1
 .ORG $BFE0
 SEI
 LDX #$FF
 STX MMC1_CONTROL
 JMP Reset
 .ORG $BFFA
 .DW $FFE0, $FFE0, $FFE0
 .ENDM

 SWITCHED_PRG_BANKS
 MMC1_WAY_BACK 1
 MMC1_WAY_BACK 3
 MMC1_WAY_BACK 5
 MMC1_WAY_BACK 7
 MMC1_WAY_BACK 9
 MMC1_WAY_BACK 11
 MMC1_WAY_BACK 13
 PRG_BANK 14, $C000
 PRG_BANK 15, $E000
 INCLUDE "common/start.asm"
 INCLUDE "common/checks.asm"
 INCLUDE "common/texts.asm"
 INCLUDE "common/report.asm"

Running:
 LDA #3
 JSR SelectMirroring
 LDA #0
 JSR SelectChr
 LDA #64 + 4
 JSR SelectChr
 JMP ShowReport

MapperReset:
 LDA #$80
 STA MMC1_CONTROL
 LDA #CONTROL_BANKS
 JMP SetControl

CheckOwn:
 RTS

SetControl:
 STA MMC1_CONTROL
 LSR A
 STA MMC1_CONTROL
 LSR A
 STA MMC1_CONTROL
 LSR A
 STA MMC1_CONTROL
 LSR A
 STA MMC1_CONTROL
 RTS

; 16 KB bank n / 2 at $8000; its second half at $A000
SelectPrg:
 LSR A
 PHP
 STA MMC1_PRG
 LSR A
 STA MMC1_PRG
 LSR A
 STA MMC1_PRG
 LSR A
 STA MMC1_PRG
 LSR A
 STA MMC1_PRG
 LDA #$80
 PLP
 BCC .first
 LDA #$A0
.first
 RTS

; steps 0 to 63 in the window at $0000, 64 to 127 in the one at $1000
SelectChr:
 STA <Pattern
 LSR A
 LSR A
 LDX <Pattern
 CPX #64
 BCS .upper
 STA MMC1_CHR_0
 LSR A
 STA MMC1_CHR_0
 LSR A
 STA MMC1_CHR_0
 LSR A
 STA MMC1_CHR_0
 LSR A
 STA MMC1_CHR_0
 LDA <Pattern
 AND #$03
 ASL A
 ASL A
 RTS
.upper
 AND #$0F
 STA MMC1_CHR_1
 LSR A
 STA MMC1_CHR_1
 LSR A
 STA MMC1_CHR_1
 LSR A
 STA MMC1_CHR_1
 LSR A
 STA MMC1_CHR_1
 LDA <Pattern
 AND #$03
 ASL A
 ASL A
 ORA #$10
 RTS

; the mapper's four settings in order
SelectMirroring:
 TAX
 ORA #CONTROL_BANKS
 JSR SetControl
 LDA Mirrorings,X
 RTS

Mirrorings:
 .DB MIRROR_SINGLE, MIRROR_SINGLE, MIRROR_VERTICAL, MIRROR_HORIZONTAL

ReportTexts:
 .DB $20, $48
 .STR "MMC1 BANK CHECK"
 .DB $20, $83
 .STR "MAPPER 1  PRG 128  CHR 64"
 .DB $20, $E4
 .STR "PRG"
 .DB $21, $24
 .STR "CHR"
 .DB 0
ReportPalette:
 .DB $0F, $30, $2A, $16, $0F, $34, $24, $14, $0F, $3A, $2A, $1A, $0F, $36, $16, $06
 .DB $0F, $30, $24, $14, $0F, $30, $24, $14, $0F, $30, $24, $14, $0F, $30, $24, $14

Ignore:
 RTI

 .ORG $FFE0
 SEI
 LDX #$FF
 STX MMC1_CONTROL
 JMP Reset
 .ORG $FFFA
 .DW Ignore, $FFE0, Ignore

 CHR_BANK 0, "report.bin"
 CHR_BANK 1, "report.bin"
 CHR_BANK 2, "report.bin"
 CHR_BANK 3, "report.bin"
 CHR_BANK 4, "report.bin"
 CHR_BANK 5, "report.bin"
 CHR_BANK 6, "report.bin"
 CHR_BANK 7, "report.bin"
