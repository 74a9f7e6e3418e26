; Addresses and counts may hang on names further down as long as they settle.
 .ORG Base
 .DB $01
 .DS Gap
 .DB $02
 .RSSET Ram
Byte .RS Size
Next .RS 1
 .DW Next
Base = $8003
Gap = Size
Ram = $300
Size = 2
