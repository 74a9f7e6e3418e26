; What falls, and the basket.

StartGame:
 LDX #0
 TXA
.score
 STA <Score,X
 INX
 CPX #5
 BNE .score
 TAX
.items
 STA Item_Kind,X
 INX
 CPX #ITEMS * 4 + SPARKS * 3
 BNE .items
 STA <Catches
 STA <Hurt_Time
 STA <Level
 LDA #HEARTS_AT_START
 STA <Hearts
 LDA #1
 STA <Multiplier
 LDA #116
 STA <Basket_X
 LDA #30
 STA <Spawn_Time
 JSR StartTune

; A level is a third of a pixel a frame faster than the one before.
NextLevel:
 LDA <Level
 CMP #LEVEL_MAX
 BEQ .top
 INC <Level
.top
 LDX <Level
 LDA #$C0
 STA <Speed_L
 LDA #$00
 STA <Speed_H
.faster
 CLC
 LDA <Speed_L
 ADC #$50
 STA <Speed_L
 BCC .next
 INC <Speed_H
.next
 DEX
 BNE .faster
 RTS

MoveBasket:
 LDY #2
 LDA <Held
 BPL .walk
 LDY #4
.walk
 STY <Step
 LSR A
 BCC .left
 LDA <Basket_X
 CLC
 ADC <Step
 CMP #RIGHT_END
 BCC .set
 LDA #RIGHT_END
 BNE .set
.left
 LSR A
 BCC .done
 LDA <Basket_X
 SBC <Step
 BCC .end
 CMP #LEFT_END
 BCS .set
.end
 LDA #LEFT_END
.set
 STA <Basket_X
.done
 LDA <Hurt_Time
 BEQ .well
 DEC <Hurt_Time
.well
 RTS

; One new item when its time has come and a place is free: of 32, ten are rocks, two are comets, one
; is a heart.
SpawnItem:
 DEC <Spawn_Time
 BNE .not_yet
 LDX #ITEMS - 1
.find
 LDA Item_Kind,X
 BEQ .free
 DEX
 BPL .find
 INC <Spawn_Time
.not_yet
 RTS
.free
 LDA <Level
 ASL A
 ASL A
 STA <Step
 LDA #52
 SEC
 SBC <Step
 STA <Spawn_Time
 JSR Random
 LDY #ITEM_STAR
 AND #$0F
 CMP #5
 BCS .no_rock
 LDY #ITEM_ROCK
.no_rock
 CMP #14
 BCC .chosen
 LDY #ITEM_COMET
 CMP #15
 BCC .chosen
 JSR Random
 LDY #ITEM_STAR
 AND #$01
 BEQ .chosen
 LDY #ITEM_HEART
.chosen
 TYA
 STA Item_Kind,X
 LDA #TOP_OF_SKY
 STA Item_Y,X
 JSR Random
 AND #$7F
 STA Item_X,X
 JSR Random
 AND #$3F
 CLC
 ADC Item_X,X
 ADC #24
 STA Item_X,X
 RTS

MoveItems:
 LDX #ITEMS - 1
.item
 LDA Item_Kind,X
 BEQ .next
 JSR .fall
 LDA Item_Kind,X
 CMP #ITEM_COMET
 BNE .once
 JSR .fall
.once
 LDA Item_Y,X
 CMP #CATCH_TOP
 BCC .next
 CMP #CATCH_BOTTOM
 BCS .below
 LDA Item_X,X
 SEC
 SBC <Basket_X
 CLC
 ADC #13
 CMP #BASKET_WIDTH + 10
 BCS .next
 JSR Catch
 JMP .next
.below
 CMP #GROUND
 BCC .next
 LDA Item_Kind,X
 CMP #ITEM_STAR
 BNE .lost
 LDA #1
 STA <Multiplier
.lost
 LDA #ITEM_NONE
 STA Item_Kind,X
.next
 DEX
 BPL .item
 RTS
.fall
 CLC
 LDA Item_Sub,X
 ADC <Speed_L
 STA Item_Sub,X
 LDA Item_Y,X
 ADC <Speed_H
 STA Item_Y,X
 RTS

; Item X is in the basket.
Catch:
 LDY Item_Kind,X
 LDA #ITEM_NONE
 STA Item_Kind,X
 TYA
 CMP #ITEM_ROCK
 BEQ .rock
 PHA
 JSR LightSpark
 PLA
 CMP #ITEM_HEART
 BEQ .heart
 CMP #ITEM_COMET
 BEQ .comet
 LDA <Multiplier
 JSR AddScore
 LDA <Multiplier
 CLC
 ADC #SOUND_CATCH - 1
 JSR StartSound
 LDA <Multiplier
 CMP #MULTIPLIER_MAX
 BEQ .count
 INC <Multiplier
.count
 INC <Catches
 LDA <Catches
 CMP #CATCHES_PER_LEVEL
 BNE .done
 LDA #0
 STA <Catches
 LDA #SOUND_LEVEL
 JSR StartSound
 TXA
 PHA
 JSR NextLevel
 PLA
 TAX
.done
 RTS
.comet
 LDA <Multiplier
 ASL A
 ASL A
 CLC
 ADC <Multiplier
 JSR AddScore
 LDA #SOUND_COMET
 JMP StartSound
.heart
 LDA #SOUND_HEART
 JSR StartSound
 LDA <Hearts
 CMP #HEARTS_MAX
 BEQ .done
 INC <Hearts
 RTS
.rock
 LDA #1
 STA <Multiplier
 DEC <Hearts
 LDA #60
 STA <Hurt_Time
 JMP CrashSound

; A: tens of points, at most 25
AddScore:
 CLC
 ADC <Score + 4
 STA <Score + 4
 LDY #4
.digit
 LDA Score,Y
 CMP #10
 BCC .next
 SBC #10
 STA Score,Y
 CPY #0 ; leaves the carry set, too
 BEQ .done
 LDA Score - 1,Y
 ADC #0
 STA Score - 1,Y
 BCC .digit
.next
 DEY
 BPL .digit
.done
 RTS

KeepBest:
 LDX #0
.compare
 LDA <Score,X
 CMP <Best,X
 BCC .done
 BNE .copy
 INX
 CPX #5
 BNE .compare
.done
 RTS
.copy
 LDX #4
.digit
 LDA <Score,X
 STA <Best,X
 DEX
 BPL .digit
 RTS

LightSpark:
 LDY #SPARKS - 1
.find
 LDA Spark_Time,Y
 BEQ .free
 DEY
 BNE .find
.free
 LDA Item_X,X
 CLC
 ADC #4
 STA Spark_X,Y
 LDA Item_Y,X
 STA Spark_Y,Y
 LDA #16
 STA Spark_Time,Y
 RTS

MoveSparks:
 LDX #SPARKS - 1
.spark
 LDA Spark_Time,X
 BEQ .next
 DEC Spark_Time,X
 DEC Spark_Y,X
.next
 DEX
 BPL .spark
 RTS
