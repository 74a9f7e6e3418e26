; Each line fails for the reason in its comment; the lines between are fine.
 .org $8000
 .db 256                ; above a byte
 .db -129               ; below a byte
 .dw 65536              ; above a word
 .db 1,                 ; nothing behind the comma
 .db                    ; nothing at all
 .str text              ; no quotes
 .str "text             ; no closing quote
 .str "A"B"             ; the quote in a name ends the text
 incbin "missing.bin"   ; no such file
 .ds -1                 ; can't reserve less than nothing
 .foo 1                 ; no such directive
 foo                    ; no such instruction
 LDA 5 6                ; text behind the operand
 .rsset $10000
 .rs 1                  ; beyond the address space
 .rsset -1
