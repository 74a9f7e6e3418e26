; Star Catcher, a small game for NROM with 16 KB of PRG ROM and 8 KB of CHR ROM (mapper 0), name
; tables arranged vertically. It checks its banks like the other samples and shows the outcome on
; its title. 16 KB fill the 32 KB of the CPU's view twice, and the check wants both copies.
;
; Stars fall from the night sky. Left and right move the basket, A makes it hurry. Every star in a
; row raises the multiplier, up to five; a star that is missed takes it back to one. Rocks cost a
; heart, comets pay five stars, hearts heal. Eight catches make a level.

 .INESPRG 1
 .INESCHR 1
 .INESMAP 0
 .INESMIR 1

SAMPLE_ID = 1
PRG_BANKS = 2
PRG_STEPS = 4
CHR_BANKS = 8
CHR_STEPS = 8
MIRROR_STEPS = 1
WORK_RAM = 0

 INCLUDE "common/hardware.asm"
 INCLUDE "common/marks.asm"
 INCLUDE "star_catcher/memory.asm"

 PRG_BANK 0, $C000
 INCLUDE "star_catcher/items.asm"
 INCLUDE "star_catcher/screens.asm"
 INCLUDE "star_catcher/sound.asm"

 PRG_BANK 1, $E000
 INCLUDE "common/start.asm"
 INCLUDE "common/checks.asm"
 INCLUDE "common/texts.asm"
 INCLUDE "common/fixed_prg.asm"
 INCLUDE "common/fixed_chr.asm"

SelectMirroring:
 LDA #MIRROR_VERTICAL
 RTS

Running:
 LDA #$A7
 STA <Random_State
 LDA #$0F
 STA APU_STATUS
 LDA #$08
 STA $4001

Title:
 JSR DrawTitle
.wait
 JSR NextFrame
 JSR BlinkPrompt
 JSR DriftStars
 LDA <Pressed
 AND #BUTTON_START
 BEQ .wait
 LDA <Frame
 ORA #$01 ; a generator at 0 would stay there
 STA <Random_State

Play:
 JSR StartGame
 JSR DrawField
.frame
 JSR NextFrame
 JSR Twinkle
 JSR MoveBasket
 JSR MoveItems
 JSR SpawnItem
 JSR MoveSparks
 JSR DrawSprites
 LDA <Hearts
 BNE .frame

GameOver:
 JSR KeepBest
 JSR DrawGameOver
 LDA #40 ; presses meant for the game don't count
 STA <Hurt_Time
.late
 JSR NextFrame
 DEC <Hurt_Time
 BNE .late
.wait
 JSR NextFrame
 JSR BlinkPrompt
 LDA <Pressed
 AND #BUTTON_START
 BEQ .wait
 JMP Title

; Waits for the next NMI, then reads the first pad and goes on with the sounds.
NextFrame:
 LDA <Frame
.wait
 CMP <Frame
 BEQ .wait
 JSR ReadPad
 JMP PlaySounds

; Held and Pressed: bits from A down to right.
ReadPad:
 LDA #1
 STA JOY1
 STA <Count
 LSR A
 STA JOY1
.button
 LDA JOY1
 AND #$03 ; the second bit is a pad in the expansion port
 CMP #$01
 ROL <Count
 BCC .button
 LDA <Held
 EOR #$FF
 AND <Count
 STA <Pressed
 LDA <Count
 STA <Held
 RTS

; A random byte in A: a shift register of eight bits, turned twice for more spread.
Random:
 JSR .turn
.turn
 LDA <Random_State
 ASL A
 BCC .even
 EOR #$1D
.even
 STA <Random_State
 EOR <Frame
 RTS

; Each frame: sprites, the two changing colours, and in the game the line of figures.
Nmi:
 PHA
 TXA
 PHA
 LDA <Screen_On
 BEQ .dark
 LDA #0
 STA OAM_ADDR
 LDA #HIGH(Sprites)
 STA OAM_DMA
 JSR SendColours
 LDA <Playing
 BEQ .still
 JSR SendFigures
.still
 LDA #0
 STA PPU_ADDRESS
 STA PPU_ADDRESS
 STA PPU_SCROLL
 STA PPU_SCROLL
 LDA #$88
 STA PPU_CTRL
 LDA #$1E
 STA PPU_MASK
.dark
 INC <Frame
 PLA
 TAX
 PLA
Ignore:
 RTI

 .ORG $FFFA
 .DW Nmi, Reset, Ignore

 CHR_BANK 0, "game.bin"
