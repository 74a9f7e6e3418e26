; Names that are defined twice or nowhere.
 .org $8000
one
one                             ; again
.local
.local                          ; again, in the same stretch
two = 1
 .rsset 0
two .rs 1                       ; nor in RAM
three
 bne .local                     ; belongs to `one`
5abc nop                        ; no name
ring = round
round = ring
 = 5                            ; no name in front
.fail
 .endp                          ; procedures don't nest and must end
 .proc
 .proc a
 .proc b
 .endp
 .proc c
