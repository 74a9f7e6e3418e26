; A file goes on in the banks behind its own, and the location with it. Nothing else does.
 .INESPRG 3
 .BANK 1
 .ORG $BFFF
Begin .INCBIN "data_bytes.inc"
End .DB LOW(End),HIGH(End),BANK(Begin),BANK(End)
 .BANK 0
 .ORG $1FFD
 .INCBIN "data_bytes.inc"       ; fills its bank: the next one isn't touched,
 .INCBIN "data_bytes.inc"       ; but by a file that finds no room
 .BANK 2
 .DB 2                          ; behind End
 .BANK LAST                     ; a bank whose number isn't known yet
 .ORG $DFFE
 .INCBIN "data_bytes.inc"
 .DB 3
LAST = 4
