; Macros: arguments, labels of an expansion's own, nesting.
 .org $8000
 .macro load                    ; .MACRO NAME
 lda #\1
 ldx #\2
 .endm
wait .macro                     ; NAME .MACRO
.loop dex                       ; local to each expansion
 bne .loop
 bne \1                         ; a local name of the caller
skip\@ nop                      ; \@ makes a name of its own
 .dw skip\@
 .db \#
 .endm
both macro
 load \1,\2
 wait .here
 endm
bytes .macro
 .db \1,\2,\3
 .if \#>3
 .db \4
 .endif
 .endm
make macro
\1 macro
 .db \2
 endm
 endm
 make fives,5
read macro
 lda \1
 endm
main:
.here
 both 1,(2+3)
 wait .here
 bytes "a,b", ',',LOW($1234)
 bytes 1,2,3,4
 fives                          ; made by another macro
 read (<2,x)                    ; one argument
