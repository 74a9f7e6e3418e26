; Conditions use names defined above them, and end where they began.
 .org $8000
 .if Below
 .endif
 .else
 .endif
 .if 1
 .else
 .else                          ; a second one
 .endif
 .if 1/0
 .endif
 .ifdef
 .endif
 .if 1                          ; never closed
Below = 1
