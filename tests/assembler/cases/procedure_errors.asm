; Procedures don't nest and must end.
 .endp
 .proc
 .proc a
 .proc b
 .endp
 .proc c
