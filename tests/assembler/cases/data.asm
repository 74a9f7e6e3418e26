; Data directives, their lists and their limits.
 .org $8000
 .db "AB",1,"C;D\n",'"'         ; no escapes: \n is two bytes
 .byte -128,255,-1
 .dw -32768,65535,$ABCD
 .str ""
 .str "\"                       ; one byte
 .ds 2                          ; stays unused ROM
 .ds 3,$AA
 .ds 2,Ahead
 incbin "data_bytes.inc"
Ahead = $55
 db 7,>$12345                   ; the byte above the low one
 word 8
