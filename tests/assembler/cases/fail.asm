; .FAIL stops nothing, but makes the run fail.
 .if 0
 .fail "not this one"
 .endif
 .fail "this menu needs a board"
 .fail
