; Each bank keeps its own location; the address only gives the labels their upper bits.
 .INESPRG 2
 .INESCHR 1
 .INESMAP $45
 .INESMIR 3
 .BANK 1
 .DB $11                ; a bank begins at offset 0
 .BANK 3
 .ORG $A000
Tables .DB $31
 .ORG $FE00             ; the same bank under another address: offset $1E00
Code .DB $32
 .DW Tables,Code,*      ; `*` is the address of the line: $FE01
 .BANK 1
 .DB $12                ; goes on behind $11
 .BANK 3
 .DB $33                ; goes on at $FE07
 .DB BANK(Code),BANK(Ahead)
 .BANK 2
 .ORG $BFFF
 .DB $21                ; the last byte
Ahead
 .BANK 0
 .ORG $8010
 .DB 1,2,3
 .ORG $8011
 .DB 9                  ; over what stood there
 .BANK 4                ; CHR banks lie behind those of PRG
 .ORG $0000
 .DB $C0
