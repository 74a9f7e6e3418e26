; Names: case counts, length doesn't, local ones hold between global labels.
 .org $8000
one:
.loop dex
 bne .loop
ONE nop
.loop: dey
 bne .loop
.size = 3                       ; local constants too
 lda #.size
two .equ 2
three equ two + 1
two = 2                         ; again as what it is: a warning
a_name_of_more_than_thirty_one_characters_in_all = 4
 .db two,three,a_name_of_more_than_thirty_one_characters_in_all
  indented: .dw indented        ; a colon makes a label anywhere
  four = 4
 .db four
start                           ; a procedure is a label; its local names end with it
.x nop
 .proc first
.x nop
 jmp .x
 .endp
second .proc
 jmp start
 .endp
 jmp .x                         ; that of `start` again
 .dw first,second
