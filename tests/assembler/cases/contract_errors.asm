; The messages that a user of a build may see, all in one run.
 .INESPRG 1
 .BANK 2                        ; banks 0 and 1 exist
 .BANK 0
 .ORG $8000
    LDA Nowhere                 ; undefined
    LDA #256
    LDA #Late                   ; known later
    STA <$100
    BNE Far                     ; 128 bytes ahead
    .DS 128
Far BEQ Far - 127               ; 129 bytes back
    INCLUDE "missing.asm"
    .BANK Wrong                 ; never defined
 .BANK 1
 .ORG $BFFE
 .DW 1
 .DW 2                          ; past the end
Late = 300
 .STR "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
