; Includes with both spellings, two levels deep; names are shared.
 .org $8000
 INCLUDE "includes_a.inc"
 .db 3
 .include "includes_b.inc"
