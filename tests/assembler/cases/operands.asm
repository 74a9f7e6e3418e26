; Choices between operand forms.
 .org $8000
zero = $20
 lda zero                       ; absolute: writers count its cycles
 lda $20,x
 lda <zero + 1                  ; < is about the whole operand
 ldx zero,y
 stx zero,y                     ; has no absolute form
 lda (zero),y
 lda [zero,x]
 lda (zero)+1                   ; parentheses of an expression
 lda (zero)*2,x
 ldx (zero),y                   ; LDX has no indirect form
 jmp (zero)
 jmp later
 lda later
 sty later,x
 ldy <later,x
 lda #>later
 lda -2                         ; wraps to $FFFE
later = $30
