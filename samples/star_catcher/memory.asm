; Variables and constants of the game.

BUTTON_A = $80
BUTTON_START = $10
BUTTON_LEFT = $02
BUTTON_RIGHT = $01

ITEMS = 6
ITEM_NONE = 0
ITEM_STAR = 1
ITEM_ROCK = 2
ITEM_HEART = 3
ITEM_COMET = 4
SPARKS = 4

HEARTS_AT_START = 3
HEARTS_MAX = 5
MULTIPLIER_MAX = 5
LEVEL_MAX = 9
CATCHES_PER_LEVEL = 8

BASKET_Y = 199
BASKET_WIDTH = 24
CATCH_TOP = BASKET_Y - 12
CATCH_BOTTOM = BASKET_Y + 4
GROUND = 206
TOP_OF_SKY = 24
RIGHT_END = 228
LEFT_END = 4

TILE_STAR = $80 ; 2 by 2 tiles, the lower pair 16 further on; the other items follow
TILE_BASKET = $88
TILE_SPARK = $8E

 .RSSET Own_Ram
Random_State .RS 1
Held .RS 1
Pressed .RS 1
Screen_On .RS 1     ; the NMI may touch the PPU
Playing .RS 1
Colour_Prompt .RS 1 ; colour 1 of background palette 3
Colour_Sky .RS 1    ; colour 3 of background palette 0, the far stars
Basket_X .RS 1
Hearts .RS 1
Multiplier .RS 1
Level .RS 1
Catches .RS 1
Spawn_Time .RS 1
Hurt_Time .RS 1     ; the basket blinks after a rock
Speed_L .RS 1       ; of a falling star, 1/256 pixel and pixels a frame
Speed_H .RS 1
Oam_Index .RS 1
Sound_Place .RS 2   ; next note of the running sound
Sound_Time .RS 1    ; frames until then; 0 for silence
Tune_Place .RS 1    ; step of the tune
Tune_Time .RS 1
Score .RS 5         ; decimal digits, in tens
Best .RS 5

 .RSSET $0500
Item_Kind .RS ITEMS
Item_X .RS ITEMS
Item_Y .RS ITEMS
Item_Sub .RS ITEMS  ; 1/256 pixel
Spark_X .RS SPARKS
Spark_Y .RS SPARKS
Spark_Time .RS SPARKS
