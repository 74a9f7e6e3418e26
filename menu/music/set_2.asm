; Music set 2: where the menu expects its pieces (menu.asm, "Music sets").

SOUND_PLAY              = $8000
SOUND_INIT              = $C400
SONG_BGM                = 15
SONG_ITEM               = 38
SONG_PAGE               = 37
SONG_ENTER              = 36
LOW_STREAM_BANK         = 1

    .INESPRG 2
    .INCLUDE "driver.asm"
    .INCLUDE "set_2_data.asm"
