; Header fields are checked where they stand, banks against the final sizes.
 .bank 4
 .bank 3
 .bank -1
 .inesprg 256
 .inesmap -1
 .inesmir 16
 .inesprg 2
 .ineschr 0
