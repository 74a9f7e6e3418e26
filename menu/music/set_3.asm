; Music set 3: where the menu expects its pieces (menu.asm, "Music sets").

SOUND_PLAY              = $8001
SOUND_INIT              = $C400
SONG_BGM                = 1
SONG_ITEM               = 16
SONG_PAGE               = 14
SONG_ENTER              = 19
LOW_STREAM_BANK         = 1

    .INESPRG 2
    .INCLUDE "driver.asm"
    .INCLUDE "set_3_data.asm"
