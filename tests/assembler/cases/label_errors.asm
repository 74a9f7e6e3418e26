; Names that are defined twice or nowhere.
 .org $8000
one
one                             ; again
.local
.local                          ; again, in the same stretch
two = 1
two = 1                         ; a constant is defined once, whatever its value
 .rsset 0
two .rs 1                       ; nor in RAM
three
 bne .local                     ; belongs to `one`
5abc nop                        ; no name
ring = round
round = ring
 = 5                            ; no name in front
.fail
