; From power-on to the end of the checks. The sample supplies MapperReset, which makes the mapper
; ready and keeps this bank where it is, and Running, entered by a jump when the checks are done
; and their outcome stands at Result.

Reset:
 SEI
 CLD
 LDX #$FF
 TXS
 LDA #$40
 STA APU_FRAME ; no interrupts from the sound unit
 LDA #0
 STA PPU_CTRL
 STA PPU_MASK
 STA DMC_CTRL
 STA APU_STATUS
 BIT PPU_STATUS
.warming
 BIT PPU_STATUS
 BPL .warming
 LDA #0
 TAX
.clear
 STA <$0000,X
 STA $0100,X
 STA $0200,X
 STA $0300,X
 STA $0400,X
 STA $0500,X
 STA $0600,X
 STA $0700,X
 INX
 BNE .clear
 JSR HideSprites
.warm
 BIT PPU_STATUS
 BPL .warm
 JSR MapperReset
 JSR RunChecks
 JSR PublishResult
 JMP Running

HideSprites:
 LDX #0
 LDA #$F8
.hide
 STA Sprites,X
 INX
 BNE .hide
 RTS
