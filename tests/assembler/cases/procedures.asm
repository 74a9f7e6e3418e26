; A procedure is a label; its local names end with it.
 .org $8000
start
.x nop
 .proc first
.x nop
 jmp .x
 .endp
second .proc
 jmp start
 .endp
 jmp .x                         ; that of `start` again
 jsr first
 jsr second
