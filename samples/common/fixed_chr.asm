; Boards that don't switch their CHR and have nothing else to look at: bank n lies at n * $400.

SelectChr:
 ASL A
 ASL A
MapperReset:
CheckOwn:
 RTS
