; The menu's sound driver. A set (set_N.asm) says where its pieces lie and includes it, together with
; the data that tools/music makes of the set's tune. docs/music.md tells of the data's form.
;
; There are eight channels: a tune plays on 0 to 3, an effect on 4 to 7, and each pair shares one of
; the console's sound channels: pulse 1, pulse 2, triangle, noise. Both of a pair always run; the
; effect is the one that is heard. So a tune goes on below an effect, and as the registers are
; written anew in every frame, it is back the moment the effect ends.
;
; Everything lies in the zero page below $40 and in page $06. $00 and $01 are not ours. RAM full of
; zeros means silence. Registers and APU: NESdev wiki, "APU" and its pages on the channels.
;
; The set defines: SOUND_PLAY and SOUND_INIT (addresses of the entries), SONG_BGM, SONG_ITEM,
; SONG_PAGE, SONG_ENTER (song numbers, from 1), and LOW_STREAM_BANK, the bank that holds the tune's
; triangle and noise: 1 as for the pulses, or 2, which the driver then maps at $A000 itself.

; ---------------------------------------------------------------------------------------------
; Constants
; ---------------------------------------------------------------------------------------------

APU_CONTROL             = $4000 ; volume and duty; the triangle's linear counter
APU_SWEEP_1             = $4001
APU_PERIOD_LOW          = $4002
APU_PERIOD_HIGH         = $4003 ; writing it restarts a pulse's wave, which clicks
APU_SWEEP_2             = $4005
APU_STATUS              = $4015
APU_FRAME               = $4017
BANK_CTRL               = $8000
BANK_DATA               = $8001
BANK_NUMBER             = $BFFF ; the last byte of each bank at $A000 says which one it is

EFFECT                  = 4     ; an effect's channel number less that of its sound channel
CHANNELS                = 8
EFFECT_READS            = 2     ; channels of an effect that may read events in one frame
TRIANGLE                = 2
NOISE                   = 3

CONTROL_SILENT          = $30   ; constant volume 0, length counter halted
CONTROL_SQUARE          = $B0   ; the same with 50 % duty
FRAME_NOW               = $C0   ; no interrupt; the linear counter takes its value at once
TRIANGLE_SILENT         = $80   ; linear counter held at 0
TRIANGLE_ON             = $FF

; The first byte of an event. Smaller ones are notes, those from VOLUME on hold a number.
REST                    = $60
HOLD                    = $61
GATE                    = $62
LENGTH                  = $63
JUMP                    = $64
END                     = $65
VOLUME                  = $70
SHORT_LENGTH            = $80
INSTRUMENT              = $C0

GO_TO                   = $80   ; in an envelope: go on at the offset in the next byte; 0: stay

; Offsets in an instrument of the offsets at which its envelopes begin; 0 for one that it hasn't
INSTRUMENT_VOLUME       = 0
INSTRUMENT_RELEASE      = 1
INSTRUMENT_DUTY         = 2
INSTRUMENT_ARPEGGIO     = 3
INSTRUMENT_PITCH        = 4

; ---------------------------------------------------------------------------------------------
; RAM; 8 bytes are one for each channel
; ---------------------------------------------------------------------------------------------

    .RSSET $02
Stream                  .RS 2   ; what is read
Instrument              .RS 2   ; the instrument of the channel in work
Control                 .RS 1   ; what the sound channel in work is to get
Period                  .RS 2
Scratch                 .RS 1
ReadsLeft               .RS 1   ; of EFFECT_READS

    .RSSET $20                  ; where each envelope stands: offset in the instrument; 0: it stays
VolumeAt                .RS 8
DutyAt                  .RS 8
ArpeggioAt              .RS 8
PitchAt                 .RS 8

    .RSSET $0600
Playing                 .RS 1   ; 0 until the first song
PeriodHigh              .RS 4   ; last byte written to each APU_PERIOD_HIGH
StreamLow               .RS 8
StreamHigh              .RS 8   ; 0: the channel rests
    .IF LOW_STREAM_BANK != 1
StreamBank              .RS 8
    .ENDIF
Left                    .RS 8   ; frames until the next event, this one included
Length                  .RS 8   ; frames of an event
Gate                    .RS 8   ; a note is released so many frames before its end; 0: it isn't
Note                    .RS 8   ; index in PeriodTable; on noise bits 3 to 0 the period, 4 the mode
ChannelVolume           .RS 8   ; in bits 7 to 4
ReleaseAt               .RS 8   ; offset in the instrument; 0 once the note is released
InstrumentLow           .RS 8
InstrumentHigh          .RS 8
VolumeValue             .RS 8   ; what each envelope gave last
DutyValue               .RS 8
ArpeggioValue           .RS 8
PitchValue              .RS 8

; ---------------------------------------------------------------------------------------------
; Entries
; ---------------------------------------------------------------------------------------------

    .BANK 0
    .ORG SOUND_PLAY

; SoundPlay: one frame. Clobbers A, X, Y.
SoundPlay:
    LDA Playing
    BNE .Run
    RTS
.Run:
    .IF LOW_STREAM_BANK != 1
    LDA BANK_NUMBER
    PHA
    .ENDIF
    LDA #EFFECT_READS
    STA <ReadsLeft
    LDX #NOISE
.Channel:
    LDA #CONTROL_SILENT
    STA <Control
    LDA StreamHigh,X
    BEQ .Effect
    JSR RunChannel
.Effect:
    LDA StreamHigh + EFFECT,X
    BEQ .Write
    TXA
    ORA #EFFECT
    TAX
    JSR RunChannel
    TXA
    AND #EFFECT - 1
    TAX
.Write:
    LDY RegisterOffset,X
    LDA <Control
    AND #$0F
    BEQ .Silent
    LDA <Period
    STA APU_PERIOD_LOW,Y
    LDA <Period + 1
    CMP PeriodHigh,X
    BEQ .SameHigh
    STA PeriodHigh,X
    STA APU_PERIOD_HIGH,Y
.SameHigh:
    LDA <Control
    CPX #TRIANGLE
    BNE .Control
    LDA #TRIANGLE_ON
    BNE .Control
.Silent:
    LDA <Control
    CPX #TRIANGLE
    BNE .Control
    LDA #TRIANGLE_SILENT
.Control:
    STA APU_CONTROL,Y
    DEX
    BPL .Channel
    LDA #FRAME_NOW              ; else the triangle would start and stop up to half a frame late
    STA APU_FRAME
    .IF LOW_STREAM_BANK != 1
    ; falls through

; RestoreBank: maps the bank whose number lies on the stack at $A000. Clobbers A.
RestoreBank:
    LDA #7
    STA BANK_CTRL
    PLA
    STA BANK_DATA
    .ENDIF
    RTS

RegisterOffset:
    .DB $00,$04,$08,$0C

; StartSong: starts song A of the set, counted from 0; other numbers do nothing. A tune ends all that
; plays; an effect ends the effect that plays. Clobbers A, X, Y.
StartSong:
    CMP #SONG_COUNT
    BCS .Return
    TAX
    LDA SongLow,X
    STA <Stream
    LDA SongHigh,X
    STA <Stream + 1
    LDY #0
    LDX #EFFECT
    LDA Playing
    BEQ .WakeUp
    LDA [Stream],Y              ; the first channel
    CMP #EFFECT
    BCS .Stop
.WakeUp:
    LDX #NOISE
    LDA #$FF                    ; never a period's high byte, so that the first one is written
    STA Playing
.Unknown:
    STA PeriodHigh,X
    DEX
    BPL .Unknown
    LDA #$08                    ; no sweep, and none that would mute low notes
    STA APU_SWEEP_1
    STA APU_SWEEP_2
    LDA #$0F
    STA APU_STATUS
    LDA #FRAME_NOW
    STA APU_FRAME
    LDX #0
.Stop:
    LDA #0
.StopNext:
    STA StreamHigh,X
    INX
    CPX #CHANNELS
    BNE .StopNext
.Channel:
    LDA [Stream],Y
    BMI .Return
    TAX
    INY
    LDA [Stream],Y
    STA StreamLow,X
    INY
    LDA [Stream],Y
    STA StreamHigh,X
    INY
    .IF LOW_STREAM_BANK != 1
    LDA [Stream],Y
    STA StreamBank,X
    .ENDIF
    INY
    LDA #1                      ; the first event comes with the next frame
    STA Left,X
    LDA #0                      ; silent until its first note
    STA Gate,X
    STA ReleaseAt,X
    STA VolumeValue,X
    STA <VolumeAt,X
    BEQ .Channel
.Return:
    RTS

; ---------------------------------------------------------------------------------------------
; A channel's frame
; ---------------------------------------------------------------------------------------------

; LoadInstrument: gives in Instrument that of channel X. Clobbers A.
LoadInstrument .MACRO
    LDA InstrumentLow,X
    STA <Instrument
    LDA InstrumentHigh,X
    STA <Instrument + 1
    .ENDM

; StepEnvelope AT, VALUE: one frame of an envelope of channel X. Gives its value in A and the flags.
; Clobbers Y.
StepEnvelope .MACRO
    LDY <\1,X
    BEQ .Held
    LDA [Instrument],Y
    CMP #GO_TO
    BNE .Value
    INY
    LDA [Instrument],Y
    STA <\1,X
    TAY
    BEQ .Held
    LDA [Instrument],Y
.Value:
    STA \2,X
    INY
    STY <\1,X
.Held:
    LDA \2,X
    .ENDM

; RunChannel: one frame of channel X: gives Control and Period. A channel that ends in this frame
; gives nothing. Keeps X. Clobbers A, Y.
RunChannel:
    DEC Left,X
    BNE .Going
    JMP ReadEvents
.Going:
    LDA Left,X
    CMP Gate,X
    BNE RunInstrument
    JSR Release
    ; falls through

; RunInstrument: the end of RunChannel: a step of each envelope, and what comes of them.
RunInstrument:
    LoadInstrument
RunEnvelopes:
    StepEnvelope VolumeAt,VolumeValue
    BNE .Sounds
    LDY <VolumeAt,X
    BNE .Sounds
    LDA #CONTROL_SILENT         ; it stays so: until the next note nothing else is to be heard
    STA <Control
    RTS
.Sounds:
    ORA ChannelVolume,X
    TAY
    LDA VolumeTable,Y
    STA <Control
    StepEnvelope DutyAt,DutyValue
    ORA <Control
    STA <Control
    StepEnvelope ArpeggioAt,ArpeggioValue
    CLC
    ADC Note,X
    CPX #NOISE
    BEQ .Noise
    CPX #NOISE + EFFECT
    BEQ .Noise
    TAY
    LDA PeriodTableLow,Y
    STA <Period
    LDA PeriodTableHigh,Y
    STA <Period + 1
    StepEnvelope PitchAt,PitchValue
    BEQ .Return
    CMP #$80
    BCC .Up
    DEC <Period + 1             ; a negative number's high byte is $FF
    CLC
.Up:
    ADC <Period
    STA <Period
    BCC .Return
    INC <Period + 1
.Return:
    RTS

.Noise:
    CMP #$10
    BCC .Long
    EOR #$90                    ; the short sequence: bit 4 becomes bit 7
.Long:
    STA <Period
    LDA #0
    STA <Period + 1
    RTS

; Release: lets the note of channel X go. Clobbers A.
Release:
    LDA ReleaseAt,X
    BEQ .Return
    STA <VolumeAt,X
    LDA #0
    STA ReleaseAt,X
.Return:
    RTS

; ---------------------------------------------------------------------------------------------
; Events
; ---------------------------------------------------------------------------------------------

; AdvanceStream: moves the stream of channel X behind the Y bytes that were read and begins to count
; the event's frames. Clobbers A.
AdvanceStream .MACRO
    CLC
    TYA
    ADC <Stream
    STA StreamLow,X
    LDA #0
    ADC <Stream + 1
    STA StreamHigh,X
    LDA Length,X
    STA Left,X
    .ENDM

; ReadEvents: the part of RunChannel that reads the stream up to the next event that takes time. A
; tune is always on time. Of an effect's channels only two read in a frame, the others in the next
; one, so that a big effect on a busy beat doesn't take too long.
ReadEvents:
    CPX #EFFECT
    BCC .Read
    DEC <ReadsLeft
    BPL .Read
    INC Left,X
    JMP RunInstrument
.Read:
    .IF LOW_STREAM_BANK != 1
    LDA #7
    STA BANK_CTRL
    LDA StreamBank,X
    STA BANK_DATA
    .ENDIF
    LDA StreamLow,X
    STA <Stream
    LDA StreamHigh,X
    STA <Stream + 1
    LDY #0
.Next:
    LDA [Stream],Y
    INY
    CMP #REST
    BCC .Note
    CMP #SHORT_LENGTH
    BCC .Command
    CMP #INSTRUMENT
    AND #$3F
    BCS .Instrument
    STA Length,X
    BCC .Next

.Instrument:
    STY <Scratch
    TAY
    LDA InstrumentTableLow,Y
    STA InstrumentLow,X
    LDA InstrumentTableHigh,Y
    STA InstrumentHigh,X
    LDY <Scratch
    BNE .Next

.Note:
    STA Note,X
    AdvanceStream
    LoadInstrument
    LDA #CONTROL_SQUARE         ; for an instrument without these envelopes
    STA DutyValue,X
    LDA #0
    STA ArpeggioValue,X
    STA PitchValue,X
    LDY #INSTRUMENT_VOLUME
    LDA [Instrument],Y
    STA <VolumeAt,X
    INY
    LDA [Instrument],Y
    STA ReleaseAt,X
    INY
    LDA [Instrument],Y
    STA <DutyAt,X
    INY
    LDA [Instrument],Y
    STA <ArpeggioAt,X
    INY
    LDA [Instrument],Y
    STA <PitchAt,X
    JMP RunEnvelopes

.Command:
    CMP #VOLUME
    BCS .Volume
    CMP #HOLD
    BCC .Rest
    BEQ .Hold
    CMP #LENGTH
    BCC .Gate
    BEQ .Length
    CMP #JUMP
    BEQ .Jump
    LDA #0                      ; END
    STA StreamHigh,X
    RTS

.Volume:
    ASL A
    ASL A
    ASL A
    ASL A
    STA ChannelVolume,X
    JMP .Next

.Gate:
    LDA [Stream],Y
    INY
    STA Gate,X
    JMP .Next

.Length:
    LDA [Stream],Y
    INY
    STA Length,X
    JMP .Next

.Jump:
    LDA [Stream],Y
    STA <Scratch
    INY
    LDA [Stream],Y
    STA <Stream + 1
    LDA <Scratch
    STA <Stream
    LDY #0
    JMP .Next

.Rest:
    JSR Release
.Hold:
    AdvanceStream
    JMP RunInstrument

; ---------------------------------------------------------------------------------------------
; Last file
; ---------------------------------------------------------------------------------------------

    .BANK 3
    .ORG $C000

; Which song of the set each song number stands for. Unused ROM is $FF, the number of no song.
SongTable:
    .ORG SongTable + SONG_BGM - 1
    .DB 0
    .ORG SongTable + SONG_ITEM - 1
    .DB 1
    .ORG SongTable + SONG_PAGE - 1
    .DB 2
    .ORG SongTable + SONG_ENTER - 1
    .DB 3
    .ORG SOUND_INIT

; SoundInit: starts the song or effect with the number in A, counted from 0. Clobbers A, X, Y.
SoundInit:
    TAX
    .IF LOW_STREAM_BANK != 1
    LDA BANK_NUMBER
    PHA
    LDA SongTable,X
    JSR StartSong
    JMP RestoreBank
    .ELSE
    LDA SongTable,X
    JMP StartSong
    .ENDIF

    .ORG SongTable + 256        ; the tables of the data come next
