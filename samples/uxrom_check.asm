; UxROM with 128 KB of PRG ROM and CHR RAM (mapper 2), name tables arranged vertically. A write to
; $8000 to $FFFF selects the 16 KB at $8000; the last 16 KB stay at $C000. The ROM and the program
; drive the data lines together at such a write, so it goes to a place that holds the same value
; (NESdev wiki, UxROM and Bus conflict).

 .INESPRG 8
 .INESCHR 0
 .INESMAP 2
 .INESMIR 1

SAMPLE_ID = 3
PRG_BANKS = 16
PRG_STEPS = 16
CHR_BANKS = 0
MIRROR_STEPS = 1
WORK_RAM = 0
TILE_BANK = 1 ; the bank of 8 KB with the tiles, and its 16 KB

 INCLUDE "common/hardware.asm"
 INCLUDE "common/marks.asm"

 .BANK 1
 .ORG $A000
Tiles:
 INCBIN "report.bin" ; the bank's marks lie in tiles that nothing shows
 SWITCHED_PRG_BANKS
 PRG_BANK 14, $C000
 PRG_BANK 15, $E000
 INCLUDE "common/start.asm"
 INCLUDE "common/checks.asm"
 INCLUDE "common/texts.asm"
 INCLUDE "common/report.asm"

Running:
 JSR LoadTiles
 JMP ShowReport

MapperReset:
CheckOwn:
 RTS

; 16 KB bank n / 2 at $8000; its second half at $A000
SelectPrg:
 LSR A
 TAX
 STA SixteenNumbers,X
 LDA #$80
 BCC .first
 LDA #$A0
.first
 RTS

SixteenNumbers:
 .DB 0, 1, 2, 3, 4, 5, 6, 7

SelectMirroring:
 LDA #MIRROR_VERTICAL
 RTS

; The 8 KB of tiles to CHR RAM; then tile 0 is blank again, the bank's mark lies in it.
LoadTiles:
 LDA #TILE_BANK
 JSR SelectPrg
 LDA #LOW(Tiles)
 STA <Ptr_L
 LDA #HIGH(Tiles)
 STA <Ptr_H
 LDA #0
 TAX
 TAY
 JSR SetPpuAddress
 LDX #$20
.copy
 LDA [Ptr_L],Y
 STA PPU_DATA
 INY
 BNE .copy
 INC <Ptr_H
 DEX
 BNE .copy
 TXA
 JSR SetPpuAddress
 LDY #3
 LDA #0
.blank
 STA PPU_DATA
 DEY
 BNE .blank
 RTS

ReportTexts:
 .DB $20, $47
 .STR "UXROM BANK CHECK"
 .DB $20, $83
 .STR "MAPPER 2  PRG 128  CHR RAM"
 .DB $20, $E4
 .STR "PRG"
 .DB 0
ReportPalette:
 .DB $0F, $30, $2A, $16, $0F, $38, $28, $18, $0F, $3A, $2A, $1A, $0F, $36, $16, $06
 .DB $0F, $30, $28, $18, $0F, $30, $28, $18, $0F, $30, $28, $18, $0F, $30, $28, $18

Ignore:
 RTI

 .ORG $FFFA
 .DW Ignore, Reset, Ignore
