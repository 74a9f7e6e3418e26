; Sounds: one effect at a time on the first pulse wave, a crash on the noise, and a tune on the
; triangle. A sound is a row of notes, each a number in Periods; 0 ends it.

SOUND_CATCH = 0 ; and the next four, higher with each step of the multiplier
SOUND_COMET = 5
SOUND_HEART = 6
SOUND_LEVEL = 7
SOUND_OVER = 8
NOTE_FRAMES = 4
TUNE_FRAMES = 10
TUNE_STEPS = 32

; A: one of the SOUND values; X is kept.
StartSound:
 ASL A
 TAY
 LDA Sounds,Y
 STA <Sound_Place
 LDA Sounds + 1,Y
 STA <Sound_Place + 1
 LDA #1
 STA <Sound_Time
 RTS

CrashSound:
 LDA #$02
 STA $400C
 LDA #$0C
 STA $400E
 LDA #$38
 STA $400F
 RTS

StartTune:
 LDA #0
 STA <Tune_Place
 LDA #1
 STA <Tune_Time
 RTS

; Once a frame.
PlaySounds:
 LDA <Sound_Time
 BEQ .tune
 DEC <Sound_Time
 BNE .tune
 LDY #0
 LDA [Sound_Place],Y
 BEQ .silent
 TAY
 LDA #$86
 STA $4000
 LDA PeriodsLow,Y
 STA $4002
 LDA PeriodsHigh,Y
 ORA #$08
 STA $4003
 INC <Sound_Place
 BNE .same
 INC <Sound_Place + 1
.same
 LDA #NOTE_FRAMES
 STA <Sound_Time
 BNE .tune
.silent
 LDA #$30
 STA $4000
.tune
 LDA <Playing
 BNE .playing
 LDA #$80
 STA $4008
 RTS
.playing
 DEC <Tune_Time
 BNE .done
 LDA #TUNE_FRAMES
 STA <Tune_Time
 LDX <Tune_Place
 LDA Tune,X
 BEQ .step
 TAY
 LDA #$18 ; two thirds of a note's time
 STA $4008
 LDA PeriodsLow,Y
 STA $400A
 LDA PeriodsHigh,Y
 ORA #$F8
 STA $400B
.step
 INX
 CPX #TUNE_STEPS
 BNE .keep
 LDX #0
.keep
 STX <Tune_Place
.done
 RTS

; Notes 1 to 25, C4 to C6, as periods of the pulse waves; the triangle sounds an octave lower.
PeriodsLow:
 .DB $00
 .DB $AB, $93, $7C, $67, $52, $3F, $2D, $1C, $0C, $FD, $EF, $E1
 .DB $D5, $C9, $BD, $B3, $A9, $9F, $96, $8E, $86, $7E, $77, $70, $6A
PeriodsHigh:
 .DB $00
 .DB $01, $01, $01, $01, $01, $01, $01, $01, $01, $00, $00, $00
 .DB $00, $00, $00, $00, $00, $00, $00, $00, $00, $00, $00, $00, $00

Sounds:
 .DW Catch1, Catch2, Catch3, Catch4, Catch5, Comet, Healing, LevelUp, Over
Catch1:
 .DB 8, 13, 0
Catch2:
 .DB 10, 15, 0
Catch3:
 .DB 12, 17, 0
Catch4:
 .DB 13, 18, 0
Catch5:
 .DB 15, 20, 0
Comet:
 .DB 8, 12, 15, 20, 24, 0
Healing:
 .DB 13, 17, 13, 20, 0
LevelUp:
 .DB 8, 13, 17, 20, 25, 0
Over:
 .DB 13, 13, 12, 12, 10, 10, 8, 8, 5, 5, 5, 1, 1, 0

; A walking line of two bars of sixteen, in C.
Tune:
 .DB 1, 0, 8, 5, 1, 0, 8, 10, 6, 0, 13, 10, 6, 0, 10, 13
 .DB 8, 0, 15, 12, 8, 0, 12, 10, 5, 0, 8, 12, 13, 12, 8, 3
