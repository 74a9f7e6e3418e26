; NROM with 32 KB of PRG ROM and 8 KB of CHR ROM (mapper 0), name tables arranged horizontally.
; Nothing can be switched: the four 8 KB of PRG must lie at $8000 to $FFFF in order.

 .INESPRG 2
 .INESCHR 1
 .INESMAP 0
 .INESMIR 0

SAMPLE_ID = 2
PRG_BANKS = 4
PRG_STEPS = 4
CHR_BANKS = 8
CHR_STEPS = 8
MIRROR_STEPS = 1
WORK_RAM = 0

 INCLUDE "common/hardware.asm"
 INCLUDE "common/marks.asm"

 PRG_BANK 0, $8000
 PRG_BANK 1, $A000
 PRG_BANK 2, $C000
 PRG_BANK 3, $E000
 INCLUDE "common/start.asm"
 INCLUDE "common/checks.asm"
 INCLUDE "common/texts.asm"
 INCLUDE "common/report.asm"
 INCLUDE "common/fixed_prg.asm"
 INCLUDE "common/fixed_chr.asm"

Running:
 JMP ShowReport

SelectMirroring:
 LDA #MIRROR_HORIZONTAL
 RTS

ReportTexts:
 .DB $20, $47
 .STR "NROM BANK CHECK"
 .DB $20, $84
 .STR "MAPPER 0   PRG 32  CHR 8"
 .DB $20, $E4
 .STR "PRG"
 .DB $21, $24
 .STR "CHR"
 .DB 0
ReportPalette:
 .DB $0F, $30, $2A, $16, $0F, $21, $11, $01, $0F, $3A, $2A, $1A, $0F, $36, $16, $06
 .DB $0F, $30, $21, $11, $0F, $30, $21, $11, $0F, $30, $21, $11, $0F, $30, $21, $11

Ignore:
 RTI

 .ORG $FFFA
 .DW Ignore, Reset, Ignore

 CHR_BANK 0, "report.bin"
