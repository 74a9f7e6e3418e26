; The RAM counter: names take its value, then it moves on. It puts no bytes.
 .org $8000
 .rsset $0200
a .rs 1
b .rs 2
c .rs 0
d .rs c - a                     ; 3
 .rs 8
e .rs 1
 .dw a,b,c,d,e
 .rsset $10000
 .rs 1                          ; beyond the address space
 .rsset -1
