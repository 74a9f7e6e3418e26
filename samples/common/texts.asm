; Texts from ROM to the dark screen.

; A: low byte, X: high byte of records of PPU address (high, low) and a counted text; a 0 ends them.
DrawTexts:
 STA <Ptr_L
 STX <Ptr_H
.record
 LDY #0
 LDA [Ptr_L],Y
 BEQ .done
 STA PPU_ADDRESS
 INY
 LDA [Ptr_L],Y
 STA PPU_ADDRESS
 INY
 LDA [Ptr_L],Y
 TAX
.letter
 INY
 LDA [Ptr_L],Y
 STA PPU_DATA
 DEX
 BNE .letter
 INY
 TYA
 CLC
 ADC <Ptr_L
 STA <Ptr_L
 BCC .record
 INC <Ptr_H
 BNE .record
.done
 RTS
