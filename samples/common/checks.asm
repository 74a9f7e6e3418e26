; The checks. The sample says what there is to check:
;   PRG_BANKS, PRG_STEPS   banks of 8 KB (a power of two), and how many windows to look through;
;                          step n must show bank n modulo PRG_BANKS
;   CHR_BANKS, CHR_STEPS   the same for CHR banks of 1 KB; 0 banks means CHR RAM. 256 steps are 0
;   MIRROR_STEPS           how many arrangements of the name tables to try
;   WORK_RAM               1 if there are 8 KB of RAM at $6000
; and how the mapper is told, by these routines:
;   SelectPrg        step in A: maps the bank, gives the high byte of its CPU address in A
;   SelectChr        step in A: maps the bank, gives the high byte of its PPU address in A
;   SelectMirroring  step in A: sets it, gives a MIRROR value in A
;   CheckOwn         whatever else the board has; RTS if nothing
; All run with the screen dark.

RunChecks:
 JSR CheckPrgBanks
 .IF CHR_BANKS
 JSR CheckChrBanks
 .ELSE
 JSR CheckChrRam
 .ENDIF
 JSR CheckMirroring
 .IF WORK_RAM
 JSR CheckWorkRam
 .ENDIF
 JMP CheckOwn

FaultBits:
 .DB $01, $02, $04, $08, $10, $20, $40

; A: one of the FAULT values, which is looked for from here on
BeginCheck:
 STA <Fault
 TAX
 LDA FaultBits,X
 ORA <Tested
 STA <Tested
 RTS

; A: byte read, X: where. Keeps the first one.
NoteFault:
 LDY <Fault_First
 BNE .known
 STA <Fault_Read
 STX <Fault_Bank
 LDA <Fault
 STA <Fault_First
.known
 LDX <Fault
 LDA FaultBits,X
 ORA <Failed
 STA <Failed
 RTS

; Compares the three bytes at Ptr with the marks of bank Expected. Carry set if they differ; then
; A holds the number that was read.
CompareMark:
 LDY #0
 LDA [Ptr_L],Y
 CMP #BANK_MARK
 BNE .differs
 INY
 LDA [Ptr_L],Y
 CMP <Expected
 BNE .differs
 INY
 EOR #$FF
 CMP [Ptr_L],Y
 BNE .differs
 CLC
 RTS
.differs
 LDY #1
 LDA [Ptr_L],Y
 SEC
 RTS

CheckPrgBanks:
 LDA #FAULT_PRG
 JSR BeginCheck
 LDA #0
 STA <Step
.next
 LDA <Step
 AND #PRG_BANKS - 1
 STA <Expected
 LDA <Step
 JSR SelectPrg
 STA <Window_H
 STA <Ptr_H
 LDA #0
 STA <Ptr_L
 JSR CompareMark
 BCS .bad
 LDA <Window_H
 ADC #HIGH(PRG_MARK_FAR)
 STA <Ptr_H
 LDA #LOW(PRG_MARK_FAR)
 STA <Ptr_L
 JSR CompareMark
 BCC .good
.bad
 LDX <Expected
 INC Prg_Results,X
 JSR NoteFault
.good
 INC <Step
 LDA <Step
 CMP #PRG_STEPS
 BNE .next
 RTS

 .IF CHR_BANKS
CheckChrBanks:
 LDA #FAULT_CHR
 JSR BeginCheck
 LDA #LOW(Buffer)
 STA <Ptr_L
 LDA #HIGH(Buffer)
 STA <Ptr_H
 LDA #0
 STA <Step
.next
 LDA <Step
 AND #CHR_BANKS - 1
 STA <Expected
 LDA <Step
 JSR SelectChr
 CLC
 ADC #$03
 LDX #$FD
 JSR SetPpuAddress
 LDA PPU_DATA
 LDX #0
.read
 LDA PPU_DATA
 STA Buffer,X
 INX
 CPX #3
 BNE .read
 JSR CompareMark
 BCC .good
 LDX <Expected
 INC Chr_Results,X
 JSR NoteFault
.good
 INC <Step
 LDA <Step
 CMP #CHR_STEPS & $FF
 BNE .next
 RTS
 .ELSE

; Fills the 8 KB twice with values that differ from page to page and byte to byte.
CheckChrRam:
 LDA #FAULT_CHR_RAM
 JSR BeginCheck
 LDA #$00
 JSR .run
 LDA #$FF
.run
 STA <Pattern
 LDA #0
 TAX
 JSR SetPpuAddress
 LDX #0
.write_page
 JSR .begin_page
.write
 TYA
 EOR <Line
 STA PPU_DATA
 INY
 BNE .write
 INX
 CPX #$20
 BNE .write_page
 LDA #0
 TAX
 JSR SetPpuAddress
 LDA PPU_DATA
 LDX #0
.read_page
 JSR .begin_page
.read
 TYA
 EOR <Line
 STA <Expected
 LDA PPU_DATA
 CMP <Expected
 BNE .bad
 INY
 BNE .read
 INX
 CPX #$20
 BNE .read_page
 RTS
.bad
 JMP NoteFault

; Y: 0, Line: what turns the number of a byte in page X into its value
.begin_page
 TXA
 ASL A
 ASL A
 ASL A
 STA <Line
 TXA
 EOR <Line
 EOR <Pattern
 STA <Line
 LDY #0
 RTS
 .ENDIF

; Writes another value to each of the four name tables and looks which of them turn up where.
CheckMirroring:
 LDA #FAULT_MIRRORING
 JSR BeginCheck
 LDA #0
 STA <Step
.next
 LDA <Step
 JSR SelectMirroring
 ASL A
 ASL A
 STA <Expected
 LDX #0
.write
 JSR NameTableAddress
 STX PPU_DATA
 INX
 CPX #4
 BNE .write
 LDX #0
.read
 JSR NameTableAddress
 LDA PPU_DATA
 LDA PPU_DATA
 LDY <Expected
 INC <Expected
 CMP MirrorTables,Y
 BNE .bad
 INX
 CPX #4
 BNE .read
.continue
 INC <Step
 LDA <Step
 CMP #MIRROR_STEPS
 BNE .next
 RTS
.bad
 JSR NoteFault
 JMP .continue

; which table's value each of the four shows, when they were written in order
MirrorTables:
 .DB 1, 1, 3, 3 ; horizontal
 .DB 2, 3, 2, 3 ; vertical
 .DB 3, 3, 3, 3 ; single

; Sets the PPU address to tile $155 of name table X.
NameTableAddress:
 TXA
 ASL A
 ASL A
 ORA #$21
 LDY #$55
 STA PPU_ADDRESS
 STY PPU_ADDRESS
 RTS

 .IF WORK_RAM
; Turns every byte over and back, which leaves saved data whole, then looks whether the 32 pages
; are 32 places.
CheckWorkRam:
 LDA #FAULT_WORK_RAM
 JSR BeginCheck
 LDX #$60
 LDY #0
 STY <Ptr_L
.page
 STX <Ptr_H
.turned
 JSR .turn
 BNE .bad
 JSR .turn
 BNE .bad
 INY
 BNE .turned
 INX
 CPX #$80
 BNE .page
 LDX #$60
.mark
 STX <Ptr_H
 LDA [Ptr_L],Y
 STA Buffer - $60,X
 TXA
 STA [Ptr_L],Y
 INX
 CPX #$80
 BNE .mark
 DEX
.compare
 STX <Ptr_H
 TXA
 CMP [Ptr_L],Y
 BNE .bad
 LDA Buffer - $60,X
 STA [Ptr_L],Y
 DEX
 CPX #$60
 BCS .compare
 RTS
.bad
 LDA [Ptr_L],Y
 JMP NoteFault

.turn
 LDA [Ptr_L],Y
 EOR #$FF
 STA [Ptr_L],Y
 CMP [Ptr_L],Y
 RTS
 .ENDIF

SetPpuAddress:
 BIT PPU_STATUS
 STA PPU_ADDRESS
 STX PPU_ADDRESS
 RTS

; Leaves the outcome where Result says.
PublishResult:
 LDX #3
.letter
 LDA PassText,X
 LDY <Fault_First
 BEQ .passed
 LDA FailText,X
.passed
 STA Result,X
 DEX
 BPL .letter
 STY Result_Fault
 LDA <Fault_Bank
 STA Result_Bank
 LDA <Fault_Read
 STA Result_Read
 LDA #SAMPLE_ID
 STA Result_Id
 RTS

PassText:
 .DB "PASS"
FailText:
 .DB "FAIL"
