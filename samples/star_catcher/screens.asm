; Drawing: whole screens in the dark, and what changes by frames.

TILE_BRICK = $01
TILE_SLOPE_UP = $80
TILE_SLOPE_DOWN = $81
TILE_HILL = $82
TILE_GROUND = $83
TILE_FAR_STAR = $84
TILE_HEART = $86
HILLS = $2320    ; row 25
FIGURES = $2048  ; row 2, behind SCORE
SKY_ROWS = $2080 ; rows 4 to 24 hold far stars
FAR_STARS = 40

Palette:
 .DB $01, $30, $1A, $31, $01, $38, $28, $17, $01, $29, $1A, $0A, $01, $30, $16, $06
 .DB $01, $30, $27, $17, $01, $30, $28, $18, $01, $10, $00, $0C, $01, $30, $16, $06

DarkScreen:
 LDA #0
 STA <Screen_On
 STA <Playing
 STA PPU_CTRL
 STA PPU_MASK
 JSR HideSprites
 LDA #$20
 LDX #$00
 JSR SetPpuAddress
 TXA
 LDY #$08
.clear
 STA PPU_DATA
 INX
 BNE .clear
 DEY
 BNE .clear
 LDA #$3F
 JSR SetPpuAddress
.colour
 LDA Palette,X
 STA PPU_DATA
 INX
 CPX #32
 BNE .colour
 LDA Palette + 3
 STA <Colour_Sky
 JSR DrawSky
 JMP DrawHills

; From the next vertical blank on the NMI does the rest.
LightScreen:
 LDA #1
 STA <Screen_On
 LDA #$88
 STA PPU_CTRL
 RTS

; Far stars at places that are the same each time.
DrawSky:
 LDX #FAR_STARS - 1
 LDA #$35
 STA <Pattern
.star
 LDA <Pattern
 ASL A
 BCC .even
 EOR #$1D
.even
 STA <Pattern
 AND #$01
 CLC
 ADC #HIGH(SKY_ROWS)
 BIT <Pattern
 BVC .upper
 ADC #1
.upper
 STA <Window_H
 LDA <Pattern
 EOR #$5A
 STA <Line
 LDA <Window_H
 CMP #HIGH(SKY_ROWS)
 BNE .below
 LDA <Line
 ORA #LOW(SKY_ROWS)
 STA <Line
.below
 LDA <Window_H
 STA PPU_ADDRESS
 LDA <Line
 STA PPU_ADDRESS
 TXA
 AND #$01
 ORA #TILE_FAR_STAR
 STA PPU_DATA
 DEX
 BPL .star
 RTS

; Two rows of hills, then ground to the bottom, in palette 2.
DrawHills:
 LDA #HIGH(HILLS)
 LDX #LOW(HILLS)
 JSR SetPpuAddress
 LDX #0
.hills
 LDA HillTiles,X
 STA PPU_DATA
 INX
 CPX #64
 BNE .hills
 LDX #32
 LDA #TILE_GROUND
.grass
 STA PPU_DATA
 DEX
 BNE .grass
 LDX #64
 LDA #TILE_HILL
.soil
 STA PPU_DATA
 DEX
 BNE .soil
 LDA #$23
 LDX #$C0
 JSR SetPpuAddress
 LDX #0
.attribute
 TXA
 LSR A
 LSR A
 LSR A
 TAY
 LDA FieldAttributes,Y
 STA PPU_DATA
 INX
 CPX #64
 BNE .attribute
 RTS

FieldAttributes:
 .DB $00, $00, $00, $00, $00, $00, $AA, $AA
HillTiles:
 .DB $00, $00, $00, $80, $81, $00, $00, $00, $00, $00, $00, $00, $00, $80, $81, $00
 .DB $00, $00, $00, $00, $00, $00, $80, $81, $00, $00, $00, $00, $00, $00, $00, $00
 .DB $00, $00, $80, $82, $82, $81, $00, $80, $81, $00, $00, $00, $80, $82, $82, $81
 .DB $00, $00, $80, $81, $00, $80, $82, $82, $81, $80, $81, $00, $00, $80, $81, $00

DrawTitle:
 JSR DarkScreen
 LDA #$20
 LDX #$88
 LDY #LogoStar - Logo
 JSR DrawLogoLine
 LDA #$21
 LDX #$42
 LDY #LogoCatcher - Logo
 JSR DrawLogoLine
 LDA #LOW(TitleTexts)
 LDX #HIGH(TitleTexts)
 LDY <Fault_First
 BEQ .passed
 LDA #LOW(FaultTexts)
 LDX #HIGH(FaultTexts)
.passed
 JSR DrawTexts
 LDA #$22
 LDX #$F0
 JSR SetPpuAddress
 LDX #0
.best
 LDA <Best,X
 ORA #'0'
 STA PPU_DATA
 INX
 CPX #5
 BNE .best
 LDA #'0'
 STA PPU_DATA
 LDA #$23 ; logo in palette 1, the prompt in palette 3
 LDX #$C8
 JSR SetPpuAddress
 LDA #$55
 LDX #24
.logo
 STA PPU_DATA
 DEX
 BNE .logo
 LDX #8
 LDA #$00
.between
 STA PPU_DATA
 DEX
 BNE .between
 LDX #8
 LDA #$0F
.prompt
 STA PPU_DATA
 DEX
 BNE .prompt
 JSR PlaceTitleStars
 JMP LightScreen

; A, X: PPU address, Y: place of the line in Logo: a count of bytes, then five rows of so many. A
; byte is one row of two letters, each three bricks wide and a gap.
DrawLogoLine:
 STA <Window_H
 STX <Line
 LDA Logo,Y
 STA <Step
 INY
 LDA #5
 STA <Count
.row
 LDA <Window_H
 LDX <Line
 JSR SetPpuAddress
 LDX <Step
.letters
 LDA Logo,Y
 INY
 STA <Pattern
 TXA
 PHA
 LDX #8
.brick
 LDA #0
 ASL <Pattern
 BCC .gap
 LDA #TILE_BRICK
.gap
 STA PPU_DATA
 DEX
 BNE .brick
 PLA
 TAX
 DEX
 BNE .letters
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

Logo:
LogoStar:
 .DB 2
 .DB %11101110, %11101110
 .DB %10000100, %10101010
 .DB %11100100, %11101100
 .DB %00100100, %10101010
 .DB %11100100, %10101010
LogoCatcher:
 .DB 4
 .DB %11101110, %11101110, %10101110, %11100000
 .DB %10001010, %01001000, %10101000, %10100000
 .DB %10001110, %01001000, %11101100, %11000000
 .DB %10001010, %01001000, %10101000, %10100000
 .DB %11101010, %01001110, %10101110, %10100000

TitleTexts:
 .DB $22, $29
 .STR "SELF-CHECK PASS"
 .DB $22, $8A
 .STR "PRESS START"
 .DB $22, $EA
 .STR "BEST"
 .DB 0
FaultTexts:
 .DB $22, $29
 .STR "SELF-CHECK FAIL"
 .DB $22, $8A
 .STR "PRESS START"
 .DB $22, $EA
 .STR "BEST"
 .DB 0

DrawField:
 JSR DarkScreen
 LDA #LOW(FieldTexts)
 LDX #HIGH(FieldTexts)
 JSR DrawTexts
 LDA #$23 ; hearts in palette 3
 LDX #$C6
 JSR SetPpuAddress
 LDA #$FF
 STA PPU_DATA
 STA PPU_DATA
 LDA #$16
 STA <Colour_Prompt
 LDA #1
 STA <Playing
 JSR SendFigures
 JSR DrawSprites
 JMP LightScreen

FieldTexts:
 .DB $20, $42
 .STR "SCORE        X  LV"
 .DB 0

; The field stays, with the basket gone.
DrawGameOver:
 LDA #0
 STA <Playing
 STA <Screen_On
 STA PPU_CTRL
.wait
 BIT PPU_STATUS
 BPL .wait
 STA PPU_MASK
 LDA #LOW(OverTexts)
 LDX #HIGH(OverTexts)
 JSR DrawTexts
 JSR SendFigures
 LDA #$23
 LDX #$E0
 JSR SetPpuAddress
 LDA #$FF
 LDX #8
.prompt
 STA PPU_DATA
 DEX
 BNE .prompt
 JSR HideSprites
 LDA #SOUND_OVER
 JSR StartSound
 JMP LightScreen

OverTexts:
 .DB $21, $8B
 .STR "GAME OVER"
 .DB $22, $2A
 .STR "PRESS START"
 .DB 0

; Four stars beside the logo.
PlaceTitleStars:
 LDX #ITEMS - 1
.item
 LDA #ITEM_STAR
 STA Item_Kind,X
 LDA TitleX,X
 STA Item_X,X
 LDA TitleY,X
 STA Item_Y,X
 DEX
 BPL .item
 RTS

TitleX:
 .DB 24, 216, 8, 200, 20, 222
TitleY:
 .DB 36, 52, 60, 30, 150, 138

; The stars of the title rise and sink a little, in turn.
DriftStars:
 LDX #ITEMS - 1
.item
 TXA
 ASL A
 ASL A
 ASL A
 ADC <Frame
 AND #$1F
 BNE .next
 TXA
 ASL A
 ASL A
 ASL A
 ADC <Frame
 AND #$20
 BEQ .sink
 DEC Item_Y,X
 DEC Item_Y,X
.sink
 INC Item_Y,X
.next
 DEX
 BPL .item
 LDA #0
 STA <Oam_Index
 JSR DrawItems
 ; fall through: the far stars
Twinkle:
 LDA <Frame
 LSR A
 LSR A
 LSR A
 LSR A
 AND #$03
 TAX
 LDA SkyColours,X
 STA <Colour_Sky
 RTS

SkyColours:
 .DB $31, $21, $11, $21

BlinkPrompt:
 LDX #$30
 LDA <Frame
 AND #$20
 BEQ .set
 LDX #$11
.set
 STX <Colour_Prompt
 RTS

SendColours:
 LDA #$3F
 STA PPU_ADDRESS
 LDA #$03
 STA PPU_ADDRESS
 LDA <Colour_Sky
 STA PPU_DATA
 LDA #$3F
 STA PPU_ADDRESS
 LDA #$0D
 STA PPU_ADDRESS
 LDA <Colour_Prompt
 STA PPU_DATA
 RTS

; Score, multiplier, level and hearts.
SendFigures:
 LDA #HIGH(FIGURES)
 STA PPU_ADDRESS
 LDA #LOW(FIGURES)
 STA PPU_ADDRESS
 LDX #0
.score
 LDA <Score,X
 ORA #'0'
 STA PPU_DATA
 INX
 CPX #5
 BNE .score
 LDA #'0'
 STA PPU_DATA
 LDA <Multiplier
 ORA #'0'
 LDX #HIGH(FIGURES)
 STX PPU_ADDRESS
 LDX #LOW(FIGURES) + 8
 STX PPU_ADDRESS
 STA PPU_DATA
 LDA <Level
 ORA #'0'
 LDX #HIGH(FIGURES)
 STX PPU_ADDRESS
 LDX #LOW(FIGURES) + 12
 STX PPU_ADDRESS
 STA PPU_DATA
 LDA #HIGH(FIGURES)
 STA PPU_ADDRESS
 LDA #LOW(FIGURES) + 17
 STA PPU_ADDRESS
 LDX #1
.heart
 LDA #TILE_HEART
 CPX <Hearts
 BCC .full
 BEQ .full
 LDA #0
.full
 STA PPU_DATA
 INX
 CPX #HEARTS_MAX + 1
 BNE .heart
 RTS

; Basket, items and sparks into the sprite page; the rest of it out of sight.
DrawSprites:
 LDA #0
 STA <Oam_Index
 JSR DrawBasket
 JSR DrawItems
 LDY <Oam_Index
 LDX #SPARKS - 1
.spark
 LDA Spark_Time,X
 BEQ .next
 LDA Spark_Y,X
 STA Sprites,Y
 LDA Spark_Time,X
 LSR A
 LSR A
 AND #$01
 ORA #TILE_SPARK
 STA Sprites + 1,Y
 LDA #$01
 STA Sprites + 2,Y
 LDA Spark_X,X
 STA Sprites + 3,Y
 INY
 INY
 INY
 INY
.next
 DEX
 BPL .spark
 LDA #$F8
.rest
 STA Sprites,Y
 INY
 BNE .rest
 RTS

DrawBasket:
 LDA <Hurt_Time
 AND #$04
 BNE .hidden
 LDX #5
 LDY #0
.tile
 LDA BasketY,X
 STA Sprites,Y
 LDA BasketTiles,X
 STA Sprites + 1,Y
 LDA #$00
 STA Sprites + 2,Y
 LDA BasketX,X
 CLC
 ADC <Basket_X
 STA Sprites + 3,Y
 INY
 INY
 INY
 INY
 DEX
 BPL .tile
 STY <Oam_Index
.hidden
 RTS

BasketX:
 .DB 0, 8, 16, 0, 8, 16
BasketY:
 .DB BASKET_Y, BASKET_Y, BASKET_Y, BASKET_Y + 8, BASKET_Y + 8, BASKET_Y + 8
BasketTiles:
 .DB TILE_BASKET, TILE_BASKET + 1, TILE_BASKET + 2
 .DB TILE_BASKET + 16, TILE_BASKET + 17, TILE_BASKET + 18

; Four sprites for each item; the order turns each frame, so that on a crowded line a different
; one is missing.
DrawItems:
 LDA <Frame
 AND #$03
 TAX
 LDA #ITEMS
 STA <Count
 LDY <Oam_Index
.item
 LDA Item_Kind,X
 BEQ .next
 ASL A
 ADC #TILE_STAR - 2
 STA <Pattern
 LDA Item_Kind,X
 STA <Line
 CMP #ITEM_COMET
 BNE .colour
 LDA #ITEM_STAR
 STA <Line
.colour
 JSR .quarter
.next
 INX
 CPX #ITEMS
 BNE .same
 LDX #0
.same
 DEC <Count
 BNE .item
 STY <Oam_Index
 RTS

.quarter
 LDA Item_Y,X
 STA Sprites,Y
 STA Sprites + 4,Y
 CLC
 ADC #8
 STA Sprites + 8,Y
 STA Sprites + 12,Y
 LDA Item_X,X
 STA Sprites + 3,Y
 STA Sprites + 11,Y
 ADC #8
 STA Sprites + 7,Y
 STA Sprites + 15,Y
 LDA <Line
 STA Sprites + 2,Y
 STA Sprites + 6,Y
 STA Sprites + 10,Y
 STA Sprites + 14,Y
 LDA <Pattern
 STA Sprites + 1,Y
 ADC #1
 STA Sprites + 5,Y
 ADC #15
 STA Sprites + 9,Y
 ADC #1
 STA Sprites + 13,Y
 TYA
 ADC #16
 TAY
 RTS
