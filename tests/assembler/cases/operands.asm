; Choices between operand forms.
 .org $8000
zero = $20
 lda zero                       ; zero page, as it is known here
 lda $0020
 lda <zero + 1                  ; < is about the whole operand
 lda zero,y                     ; no such zero page form: absolute
 ldx zero,y
 lda (zero),y
 lda [zero,x]
 lda (zero)+1                   ; parentheses of an expression
 lda (zero)*2,x
 ldx (zero),y                   ; LDX has no indirect form
 jmp (zero)
 jmp later
 lda later                      ; absolute, as it isn't known here: a size that was decided
 sta later,x                    ; further down would move everything behind it
 sty later,x                    ; has no absolute form
 lda #>later
 lda -2                         ; wraps to $FFFE
later = $30
