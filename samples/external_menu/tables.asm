; The generated tables in the banks of the menu: as many files as build/game_config.asm counts.
; Nothing to read here.

    .IF NAME_BANK_COUNT > 5
    .FAIL "This menu has room for 5 banks of names: build with --menu-size 128, which checks it"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 4
    .FAIL "This menu has room for 4 banks of records: build with --menu-size 128, which checks it"
    .ENDIF

    .IF NAME_BANK_COUNT > 0
    .BANK NAME_BANK + 0
    .ORG $A000
    INCLUDE "build/game_list_0.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 1
    .BANK NAME_BANK + 1
    .ORG $A000
    INCLUDE "build/game_list_1.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 2
    .BANK NAME_BANK + 2
    .ORG $A000
    INCLUDE "build/game_list_2.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 3
    .BANK NAME_BANK + 3
    .ORG $A000
    INCLUDE "build/game_list_3.asm"
    .ENDIF
    .IF NAME_BANK_COUNT > 4
    .BANK NAME_BANK + 4
    .ORG $A000
    INCLUDE "build/game_list_4.asm"
    .ENDIF

    .IF FINAL_DATA_BANK_COUNT > 0
    .BANK RECORD_BANK + 0
    .ORG $A000
    INCLUDE "build/game_final_data_0.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 1
    .BANK RECORD_BANK + 1
    .ORG $A000
    INCLUDE "build/game_final_data_1.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 2
    .BANK RECORD_BANK + 2
    .ORG $A000
    INCLUDE "build/game_final_data_2.asm"
    .ENDIF
    .IF FINAL_DATA_BANK_COUNT > 3
    .BANK RECORD_BANK + 3
    .ORG $A000
    INCLUDE "build/game_final_data_3.asm"
    .ENDIF

; Background tiles, then those of sprites: the design's, or by default the built-in set
    .BANK TILE_BANK
    .ORG $A000
    INCBIN "build/custom_chr_data.bin"
