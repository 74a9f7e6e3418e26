; The screen of a sample that only checks. The sample supplies:
;   ReportTexts   records of PPU address (high, low) and a counted text, closed by a 0
;   ReportPalette 32 bytes
; Row by row: name, what it is, the banks as cells (16 to a row), the other checks, the outcome in
; big letters.

TILE_BRICK = $01
TILE_CELL = $02     ; a good bank; the next tile is a bad one
TILE_CORNER = $04   ; upper left, upper right, lower left, lower right
TILE_BAR = $08      ; upper, lower, left, right edge
PANEL_TOP = $20A0
PANEL_BOTTOM = $2260
PRG_CELLS = $20EA
CHR_CELLS = $212A
OTHER_CELLS = $2244
BIG_TEXT = $22A4

; Draws everything; the screen is dark and stays dark.
DrawReport:
 JSR ClearNameTables
 JSR DrawPanel
 LDA #LOW(ReportTexts)
 LDX #HIGH(ReportTexts)
 JSR DrawTexts
 LDA #HIGH(PRG_CELLS)
 LDX #LOW(PRG_CELLS)
 LDY #PRG_BANKS
 STY <Count
 LDY #HIGH(Prg_Results)
 JSR DrawCells
 .IF CHR_BANKS
 LDA #HIGH(CHR_CELLS)
 LDX #LOW(CHR_CELLS)
 LDY #CHR_BANKS
 STY <Count
 LDY #HIGH(Chr_Results)
 JSR DrawCells
 .ENDIF
 JSR DrawOthers
 JSR DrawBigText
 JSR DrawColours
 JMP Chime

ClearNameTables:
 LDA #$20
 LDX #$00
 JSR SetPpuAddress
 TXA
 LDY #$10
.clear
 STA PPU_DATA
 INX
 BNE .clear
 DEY
 BNE .clear
 RTS

DrawPanel:
 LDA #HIGH(PANEL_TOP)
 LDX #LOW(PANEL_TOP) + 2
 LDY #0
 JSR .bar
 LDA #HIGH(PANEL_BOTTOM)
 LDX #LOW(PANEL_BOTTOM) + 2
 LDY #1
 JSR .bar
 LDA #$04 ; down a column
 STA PPU_CTRL
 LDA #HIGH(PANEL_TOP)
 LDX #LOW(PANEL_TOP) + $22
 LDY #TILE_BAR + 2
 JSR .edge
 LDA #HIGH(PANEL_TOP)
 LDX #LOW(PANEL_TOP) + $3D
 LDY #TILE_BAR + 3
 JSR .edge
 LDA #0
 STA PPU_CTRL
 RTS
.bar
 JSR SetPpuAddress
 TYA
 ASL A
 ADC #TILE_CORNER
 STA PPU_DATA
 TYA
 ADC #TILE_BAR
 LDX #26
.along
 STA PPU_DATA
 DEX
 BNE .along
 TYA
 ASL A
 ADC #TILE_CORNER + 1
 STA PPU_DATA
 RTS
.edge
 JSR SetPpuAddress
 LDX #13
.down
 STY PPU_DATA
 DEX
 BNE .down
 RTS

; A, X: PPU address of the first cell, Y: page with the results, Count: how many
DrawCells:
 STA <Window_H
 STX <Line
 STY <Ptr_H
 LDY #0
 STY <Ptr_L
.row
 LDA <Window_H
 LDX <Line
 JSR SetPpuAddress
.cell
 LDA [Ptr_L],Y
 BEQ .good
 LDA #1
.good
 CLC
 ADC #TILE_CELL
 STA PPU_DATA
 INY
 CPY <Count
 BEQ .done
 TYA
 AND #$0F
 BNE .cell
 LDA <Line
 CLC
 ADC #$20
 STA <Line
 BCC .row
 INC <Window_H
 BNE .row
.done
 RTS

; One cell for each of the faults from FAULT_CHR_RAM on that was looked for, with its name.
DrawOthers:
 LDA #HIGH(OTHER_CELLS)
 LDX #LOW(OTHER_CELLS)
 JSR SetPpuAddress
 LDX #FAULT_CHR_RAM
.next
 LDA FaultBits,X
 AND <Tested
 BEQ .skip
 LDA FaultBits,X
 AND <Failed
 BEQ .good
 LDA #1
.good
 CLC
 ADC #TILE_CELL
 STA PPU_DATA
 LDY OtherNames - FAULT_CHR_RAM,X
.letter
 LDA OtherText,Y
 BEQ .skip
 STA PPU_DATA
 INY
 BNE .letter
.skip
 INX
 CPX #FAULT_COUNTER + 1
 BNE .next
 RTS

OtherNames:
 .DB Other3 - OtherText, Other4 - OtherText, Other5 - OtherText, Other6 - OtherText
OtherText:
Other3:
 .DB " CHR RAM ", 0
Other4:
 .DB " MIRROR ", 0
Other5:
 .DB " RAM ", 0
Other6:
 .DB " COUNTER ", 0

; PASS or FAIL in letters of 5 by 5 bricks. A failure also gets a line of text with the bank.
DrawBigText:
 LDX #0
 LDA <Fault_First
 BEQ .passed
 JSR DrawFault
 LDX #20
.passed
 LDA #LOW(BIG_TEXT)
 STA <Line
 LDA #HIGH(BIG_TEXT)
 STA <Window_H
 LDA #5
 STA <Count
.row
 TXA
 PHA
 LDA <Window_H
 LDX <Line
 JSR SetPpuAddress
 PLA
 TAX
 LDY #4
.letter
 LDA BigLetters,X
 INX
 STA <Pattern
 TYA
 PHA
 LDY #6
.brick
 LDA #0
 ASL <Pattern
 BCC .blank
 LDA #TILE_BRICK
.blank
 STA PPU_DATA
 DEY
 BNE .brick
 PLA
 TAY
 DEY
 BNE .letter
 LDA <Line
 CLC
 ADC #$20
 STA <Line
 BCC .same
 INC <Window_H
.same
 DEC <Count
 BNE .row
 RTS

BigLetters:
 .DB %11110000, %01110000, %01111000, %01111000 ; PASS
 .DB %10001000, %10001000, %10000000, %10000000
 .DB %11110000, %11111000, %01110000, %01110000
 .DB %10000000, %10001000, %00001000, %00001000
 .DB %10000000, %10001000, %11110000, %11110000
 .DB %11111000, %01110000, %11111000, %10000000 ; FAIL
 .DB %10000000, %10001000, %00100000, %10000000
 .DB %11110000, %11111000, %00100000, %10000000
 .DB %10000000, %10001000, %00100000, %10000000
 .DB %10000000, %10001000, %11111000, %11111000

; "FAULT 1 BANK 05 READ 07", in place of the line that says what the sample is
DrawFault:
 LDA #LOW(FaultText)
 LDX #HIGH(FaultText)
 JSR DrawTexts
 LDA #$20
 LDX #$8A
 JSR SetPpuAddress
 LDA <Fault_First
 ORA #'0'
 STA PPU_DATA
 LDA #$20
 LDX #$91
 JSR SetPpuAddress
 LDA <Fault_Bank
 JSR DrawHex
 LDA #$20
 LDX #$99
 JSR SetPpuAddress
 LDA <Fault_Read
DrawHex:
 PHA
 LSR A
 LSR A
 LSR A
 LSR A
 JSR .digit
 PLA
 AND #$0F
.digit
 TAY
 LDA HexDigits,Y
 STA PPU_DATA
 RTS

HexDigits:
 .DB "0123456789ABCDEF"
FaultText:
 .DB $20, $80
 .STR "    FAULT   BANK    READ        "
 .DB 0

; Palette, and the attributes of both name tables: the name in palette 1, the outcome in palette 2
; or 3, what a sample draws below it in palette 1, all else in palette 0.
DrawColours:
 LDA #$3F
 LDX #$00
 JSR SetPpuAddress
.colour
 LDA ReportPalette,X
 STA PPU_DATA
 INX
 CPX #32
 BNE .colour
 LDA #$23
 JSR .table
 LDA #$27
.table
 LDX #$C0
 JSR SetPpuAddress
 LDY #0
 LDA <Fault_First
 BEQ .row
 LDY #8
.row
 LDA ReportAttributes,Y
 LDX #8
.attribute
 STA PPU_DATA
 DEX
 BNE .attribute
 INY
 TYA
 AND #$07
 BNE .row
 RTS

ReportAttributes:
 .DB $55, $00, $00, $00, $00, $AA, $5A, $55 ; pass
 .DB $55, $00, $00, $00, $00, $FF, $5F, $55 ; fail

; A rising fifth for a pass, a low buzz for a failure.
Chime:
 LDA #$03
 STA APU_STATUS
 LDA #$84
 STA $4000
 STA $4004
 LDA #$08
 STA $4001
 STA $4005
 LDX #0
 LDA <Fault_First
 BEQ .passed
 LDX #4
.passed
 LDA ChimeNotes,X
 STA $4002
 LDA ChimeNotes + 1,X
 STA $4003
 LDA ChimeNotes + 2,X
 STA $4006
 LDA ChimeNotes + 3,X
 STA $4007
 RTS

ChimeNotes:
 .DB $A9, $08, $70, $08 ; E5 and B5
 .DB $F8, $0F, $D0, $0F

; Lights the screen in the next vertical blank and stays there.
ShowReport:
 JSR DrawReport
 JSR LightScreen
.stay
 JMP .stay

LightScreen:
 BIT PPU_STATUS
.wait
 BIT PPU_STATUS
 BPL .wait
 LDA #0
 STA OAM_ADDR
 LDA #HIGH(Sprites)
 STA OAM_DMA
 LDA #0
 STA PPU_SCROLL
 STA PPU_SCROLL
 LDA #$08 ; sprites in the second pattern table
 STA PPU_CTRL
 LDA #$1E
 STA PPU_MASK
 RTS
