; A bank that turns out to be one which is used already is put together with it.
 .BANK 1
 .DB $11
 .BANK ONE
 .ORG $A002
 .DB $12
ONE = 1
