; A name that a macro's line lacks is told with all that led there; a macro needs its end.
 .org $8000
inner .macro
 lda \1
 .endm
outer .macro
 inner \1
 .endm
 outer Nowhere
open .macro
 nop
