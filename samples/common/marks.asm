; Every bank carries its number, so that a program can tell which bank it sees: three bytes, a
; fixed one, the number and the number's complement. A PRG bank (8 KB) has them at its start and
; near its end, so that a bank made of two halves shows; a CHR bank (1 KB) has them in its last
; three bytes, that is in tile $3F, $7F, $BF or $FF, which no text may use.

BANK_MARK = $B7
PRG_MARK_FAR = $1FD0

; number of the bank, CPU address at which its code is meant to run
PRG_BANK .MACRO
 .BANK \1
 .ORG (\2) + PRG_MARK_FAR
 .DB BANK_MARK, \1, 255 - (\1)
 .ORG \2
 .DB BANK_MARK, \1, 255 - (\1)
 .ENDM

; Banks 0 to 13 of a program whose last two stay: each pair of 8 KB runs at $8000 and $A000.
SWITCHED_PRG_BANKS .MACRO
 PRG_BANK 0, $8000
 PRG_BANK 1, $A000
 PRG_BANK 2, $8000
 PRG_BANK 3, $A000
 PRG_BANK 4, $8000
 PRG_BANK 5, $A000
 PRG_BANK 6, $8000
 PRG_BANK 7, $A000
 PRG_BANK 8, $8000
 PRG_BANK 9, $A000
 PRG_BANK 10, $8000
 PRG_BANK 11, $A000
 PRG_BANK 12, $8000
 PRG_BANK 13, $A000
 .ENDM

; place within the 8 KB, number of the 1 KB bank
CHR_MARK .MACRO
 .ORG (\1) + $3FD
 .DB BANK_MARK, \2, 255 - (\2)
 .ENDM

; number of the 8 KB CHR bank, file with its tiles
CHR_BANK .MACRO
 .BANK PRG_BANKS + (\1)
 .ORG $0000
 INCBIN \2
 CHR_MARK $0000, (\1) * 8
 CHR_MARK $0400, (\1) * 8 + 1
 CHR_MARK $0800, (\1) * 8 + 2
 CHR_MARK $0C00, (\1) * 8 + 3
 CHR_MARK $1000, (\1) * 8 + 4
 CHR_MARK $1400, (\1) * 8 + 5
 CHR_MARK $1800, (\1) * 8 + 6
 CHR_MARK $1C00, (\1) * 8 + 7
 .ENDM
