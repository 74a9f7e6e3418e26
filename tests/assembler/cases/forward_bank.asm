; Banks whose numbers are only known further down. Those that nothing else selects are put in place
; at the end; the others make the source be read again.
 .INESPRG 2
 .BANK FIRST
 .ORG $8000
Alone .DB $A1,LOW(Ahead)
 .BANK TWICE            ; its location goes on at the second .BANK
 .DB $B1
 .BANK 3
 .ORG $E004
 .DB $C1
 .BANK TWICE + 0
Second .DB $B2
 .DW Second
 .BANK KNOWN
 .DB $D1                ; behind $C1, as it is bank 3 too
 .DB BANK(Alone),BANK(Second)
FIRST = 0
TWICE = FIRST + 1
KNOWN = 3
Ahead = $1234
