; MMC3 with 128 KB of PRG ROM, 128 KB of CHR ROM and 8 KB of battery RAM (mapper 4). PRG banks of
; 8 KB at $8000 and $A000, CHR banks of 2 KB at $0000 and $0800 and of 1 KB at $1000 to $1C00
; (NESdev wiki, MMC3). The check looks at every PRG bank in both windows, at every CHR bank in one
; window of each size, at both arrangements of the name tables, and at the scanline counter: its
; interrupt must come, and 64 lines later when it is set 64 lines later.
;
; When the check is done the counter divides the screen: the water at the bottom moves sideways by
; the scroll register and in itself by CHR banks that change at the line.

 .INESPRG 8
 .INESCHR 16
 .INESMAP 4
 .INESMIR 3 ; vertical, battery

SAMPLE_ID = 6
PRG_BANKS = 16
PRG_STEPS = 32
CHR_BANKS = 128
CHR_STEPS = 256 ; 128 at $1000, then 128 at $0000
MIRROR_STEPS = 2
WORK_RAM = 1

MMC3_SELECT = $8000
MMC3_DATA = $8001
MMC3_MIRRORING = $A000
MMC3_RAM = $A001
MMC3_LATCH = $C000
MMC3_RELOAD = $C001
MMC3_IRQ_OFF = $E000
MMC3_IRQ_ON = $E001

FIRST_LINE = 80
SECOND_LINE = FIRST_LINE + 64
; One turn of the measuring loop takes 13 cycles, a line 341 / 3.
TURNS_OF_64_LINES = 64 * 341 / 3 / 13
TOLERANCE = 4 ; turns; a line is nearly nine
WATER_LINE = 207
WATER_TILE = $80
WATER_ROW = $2340 ; the row of tiles that shows below the line, scroll included

 INCLUDE "common/hardware.asm"
 INCLUDE "common/marks.asm"

 .RSSET Own_Ram
Turns_L .RS 1
Turns_H .RS 1
First_L .RS 1
First_H .RS 1
Irq_Seen .RS 1
Scroll_X .RS 1

 SWITCHED_PRG_BANKS
 PRG_BANK 14, $C000
 PRG_BANK 15, $E000
 INCLUDE "common/start.asm"
 INCLUDE "common/checks.asm"
 INCLUDE "common/texts.asm"
 INCLUDE "common/report.asm"

Running:
 JSR PlainBanks
 JSR DrawReport
 JSR DrawWater
 JSR LightScreen
 LDA #$88
 STA PPU_CTRL
 CLI
.stay
 JMP .stay

; a row of crests and two of deep water in both name tables, so that it may scroll
DrawWater:
 LDA #HIGH(WATER_ROW)
 JSR .rows
 LDA #HIGH(WATER_ROW) + 4
.rows
 LDX #LOW(WATER_ROW)
 JSR SetPpuAddress
 LDY #0
.tile
 TYA
 AND #$03
 CPY #32
 BCC .crest
 ORA #$04
.crest
 ORA #WATER_TILE
 STA PPU_DATA
 INY
 CPY #96
 BNE .tile
 RTS

; Each frame: the upper part at rest, the counter set to the water's line.
Nmi:
 PHA
 TXA
 PHA
 INC <Frame
 JSR PlainBanks
 LDA #0
 STA PPU_SCROLL
 STA PPU_SCROLL
 LDA #$88
 STA PPU_CTRL
 LDA #WATER_LINE
 STA MMC3_LATCH
 STA MMC3_RELOAD
 STA MMC3_IRQ_OFF
 STA MMC3_IRQ_ON
 PLA
 TAX
 PLA
 RTI

; The counter's line. While the checks run it only leaves a note.
Irq:
 STA MMC3_IRQ_OFF
 INC <Irq_Seen
 PHA
 LDA <Frame
 BEQ .checking
 INC <Scroll_X
 LDA <Scroll_X
 STA PPU_SCROLL
 STA PPU_SCROLL
 LSR A
 LSR A
 LSR A
 AND #$03
 ASL A
 ASL A
 ASL A
 ORA #$02
 PHA
 LDA #1
 STA MMC3_SELECT
 PLA
 STA MMC3_DATA
.checking
 PLA
 RTI

MapperReset:
 STA MMC3_IRQ_OFF
 LDA #$80
 STA MMC3_RAM
PlainBanks:
 LDX #5
.register
 STX MMC3_SELECT
 LDA PlainNumbers,X
 STA MMC3_DATA
 DEX
 BPL .register
 RTS

PlainNumbers:
 .DB 0, 2, 4, 5, 6, 7

; steps 0 to 15 in the window at $8000, 16 to 31 in the one at $A000
SelectPrg:
 LDX #6
 LDY #$80
 CMP #16
 BCC .lower
 SBC #16
 LDX #7
 LDY #$A0
.lower
 STX MMC3_SELECT
 STA MMC3_DATA
 TYA
 RTS

; steps 0 to 127 as 1 KB at $1000, 128 to 255 as one half of 2 KB at $0000
SelectChr:
 TAY
 BMI .lower
 LDX #2
 STX MMC3_SELECT
 STA MMC3_DATA
 LDA #$10
 RTS
.lower
 LDX #0
 STX MMC3_SELECT
 AND #$7E
 STA MMC3_DATA
 TYA
 AND #$01
 ASL A
 ASL A
 RTS

; vertical last, as the header says
SelectMirroring:
 EOR #$01
 STA MMC3_MIRRORING
 EOR #$01
 RTS

; The counter counts only while the screen is drawn from both pattern tables: it is lit, all in
; black, for the time of the measurement.
CheckOwn:
 LDA #FAULT_COUNTER
 JSR BeginCheck
 JSR PlainBanks
 JSR BlackPalette
 CLI
 LDA #FIRST_LINE
 JSR MeasureLine
 BCS .silent
 LDA <Turns_L
 STA <First_L
 LDA <Turns_H
 STA <First_H
 LDA #SECOND_LINE
 JSR MeasureLine
 BCS .silent
 SEI
 SEC
 LDA <Turns_L
 SBC <First_L
 STA <Turns_L
 LDA <Turns_H
 SBC <First_H
 STA <Turns_H
 SEC
 LDA <Turns_L
 SBC #LOW(TURNS_OF_64_LINES - TOLERANCE)
 STA <Turns_L
 LDA <Turns_H
 SBC #HIGH(TURNS_OF_64_LINES - TOLERANCE)
 BNE .wrong
 LDA <Turns_L
 CMP #TOLERANCE * 2
 BCS .wrong
 LDA #0
 STA PPU_MASK
 RTS
.silent
 SEI
.wrong
 LDA #0
 STA PPU_MASK
 LDA <Turns_L
 LDX <Turns_H
 JMP NoteFault

; A: line for the counter. Turns: how long its interrupt took from the vertical blank on. Carry set
; if none came before the next one.
MeasureLine:
 STA MMC3_LATCH
 BIT PPU_STATUS
.wait
 BIT PPU_STATUS
 BPL .wait
 LDA #$08
 STA PPU_CTRL
 LDA #$1E
 STA PPU_MASK
 STA MMC3_RELOAD
 STA MMC3_IRQ_OFF
 STA MMC3_IRQ_ON
 LDA #0
 STA <Irq_Seen
 TAY
 TAX
.turn
 INX
 BNE .low
 INY
 CPY #10 ; 2,560 turns are more than a frame
 BEQ .none
.low
 LDA <Irq_Seen
 NOP
 BEQ .turn
 CLC
 BCC .keep
.none
 SEC
.keep
 STX <Turns_L
 STY <Turns_H
 RTS

BlackPalette:
 LDA #$3F
 LDX #$00
 JSR SetPpuAddress
 LDY #32
 LDA #$0F
.colour
 STA PPU_DATA
 DEY
 BNE .colour
 RTS

ReportTexts:
 .DB $20, $48
 .STR "MMC3 BANK CHECK"
 .DB $20, $83
 .STR "MAPPER 4  PRG 128  CHR 128"
 .DB $20, $E4
 .STR "PRG"
 .DB $21, $24
 .STR "CHR"
 .DB 0
ReportPalette:
 .DB $0F, $30, $2A, $16, $0F, $3C, $2C, $1C, $0F, $3A, $2A, $1A, $0F, $36, $16, $06
 .DB $0F, $30, $21, $11, $0F, $30, $21, $11, $0F, $30, $21, $11, $0F, $30, $21, $11

 .ORG $FFFA
 .DW Nmi, Reset, Irq

 CHR_BANK 0, "water_0.bin"
 CHR_BANK 1, "water_1.bin"
 CHR_BANK 2, "water_2.bin"
 CHR_BANK 3, "water_3.bin"
 CHR_BANK 4, "report.bin"
 CHR_BANK 5, "report.bin"
 CHR_BANK 6, "report.bin"
 CHR_BANK 7, "report.bin"
 CHR_BANK 8, "report.bin"
 CHR_BANK 9, "report.bin"
 CHR_BANK 10, "report.bin"
 CHR_BANK 11, "report.bin"
 CHR_BANK 12, "report.bin"
 CHR_BANK 13, "report.bin"
 CHR_BANK 14, "report.bin"
 CHR_BANK 15, "report.bin"
