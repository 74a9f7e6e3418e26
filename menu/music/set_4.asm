; Music set 4: where the menu expects its pieces (menu.asm, "Music sets").

SOUND_PLAY              = $80D5
SOUND_INIT              = $C450
SONG_BGM                = 1
SONG_ITEM               = 21
SONG_PAGE               = 26
SONG_ENTER              = 39
LOW_STREAM_BANK         = 1

    .INESPRG 2
    .INCLUDE "driver.asm"
    .INCLUDE "set_4_data.asm"
