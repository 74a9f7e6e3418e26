; Boards that don't switch their PRG: step n of the check shows at $8000 + n * $2000.

SelectPrg:
 ASL A
 ASL A
 ASL A
 ASL A
 ASL A
 ORA #$80
 RTS
