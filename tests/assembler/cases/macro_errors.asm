; A message about a macro's line names the line and the call.
 .org $8000
bad .macro
 lda #\1
 .endm
outer .macro
 bad \1
 .endm
 bad 300
 outer Nowhere
 bad                            ; no argument
 bad 1,2,3,4,5,6,7,8,9,10       ; too many
bad .macro
 .endm
lda .macro
 .endm
 .macro
 .endm
 .endm
again .macro
 again
 .endm
 .if 1
 lda after
 again                          ; calls itself, which ends the run
after
 .endif
