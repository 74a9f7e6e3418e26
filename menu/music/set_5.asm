; Music set 5: where the menu expects its pieces (menu.asm, "Music sets").

SOUND_PLAY              = $813C
SOUND_INIT              = $DFF0
SONG_BGM                = 7
SONG_ITEM               = 17
SONG_PAGE               = 19
SONG_ENTER              = 36
LOW_STREAM_BANK         = 2

    .INESPRG 2
    .INCLUDE "driver.asm"
    .INCLUDE "set_5_data.asm"

; The driver reads here which bank is mapped at $A000.
    .IF PulseStreamsEnd > BANK_NUMBER
    .FAIL "The pulses' streams leave no room for the bank's number"
    .ENDIF
    .BANK 1
    .ORG BANK_NUMBER
    .DB 1
    .IF LowStreamsEnd > BANK_NUMBER
    .FAIL "The triangle's and noise's streams leave no room for the bank's number"
    .ENDIF
    .BANK LOW_STREAM_BANK
    .ORG BANK_NUMBER
    .DB LOW_STREAM_BANK
