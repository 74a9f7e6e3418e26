; Only the true branches are assembled; what is skipped needn't make sense.
 .org $8000
X = 2
 .if X = 2
 .db 1
 .if X > 2
 garbage "
 .else
 .db 2
 .if 0
 .else
 .db 3
 .endif
 .endif
 .else
 .if X
 .db $EE
 .else
 .db $EE
 .endif
 .endif
 .ifdef X
 .db 4
 .endif
 .ifdef Y
 .db $EE
 .endif
 .ifndef Y
 .db 5
 .endif
Label .if X >= 2
 .db LOW(Label)
 .endif
 IF X - 2
 .DB $EE
 ELSE
 .DB 6
 ENDIF
Y = 1
