; Conditions use names defined above them, and end where they began.
 .org $8000
 .if Below
 .fail "not this one"
 .endif
 .else
 .endif
 .if 1
 .else
 .else                          ; a second one
 .endif
 .if 0
 .else                          ; where that of another one is skipped
 .if 0
 .else
 .else
 .endif
 .endif
 .if 1/0
 .endif
 .ifdef
 .endif
 .fail "this menu needs a board"  ; stops nothing, but makes the run fail
 .fail
 .if 1                          ; never closed
Below = 1
