; Names that are defined twice or nowhere.
 .org $8000
one
one nop                         ; again, at the same place
one                             ; and at another
.local nop
.local                          ; again, in the same stretch
two = 1
 .rsset 0
two .rs 1                       ; nor in RAM
two .rs 1                       ; which now is at 1
two = far - 1                   ; as it will be, once that is known
two = far
far = 2
far = two * 2
far = nowhere
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
