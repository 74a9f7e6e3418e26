; The forms that the menu and the files of a build use, in upper case, with comments of any bytes.
 .INESPRG MENU_UNITS            ; used above its definition: the source is read twice
 .INESCHR 0
 .INESMAP 4
 .INESMIR 1
MENU_UNITS = 1
User_Addr = $40
 .RSSET User_Addr
Count_L .RS 1
Count_H .RS 1;no blank before this comment
Buffer .RS $10
After .RS 1                     ; $52
 .BANK BANK_NUMBER & BANK_MASK  ; both are defined further down
 .ORG $8000
Start:
    LDA #TILES * 4              ; A9 14
    LDA #LOW(Table) - 2         ; LOW() binds first
    LDX #08                     ; leading zeros stay decimal
    STA <Count_L
    LDA Table,x
.Next:
    DEX
    BNE .Next
    JSR Start
.Last
TILES = 5
Table;Super Game
 .DB $01,%00000010,003,'A',LOW(Start),HIGH(Start),After
 .DW $1234,Start
 .WORD Start,Table
name_000 .STR "PUSH SEL"
name_001 .DB $00
BANK_NUMBER = $3F
BANK_MASK = MENU_UNITS * 2 - 1
 .BANK 0 ; ÄãºÃ ä½ å¥½ €ÿ
 .ORG $8000
Label;ÿ
 .DW Label
