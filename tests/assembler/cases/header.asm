; All header fields; CHR banks lie behind those of PRG.
 .inesprg 1
 .ineschr 1
 .inesmap $45
 .inesmir 3
 .bank 2
 .org $0000
 .db $C0
