; A file that includes itself, and errors within an included file.
 include "include_errors.asm"
 include "include_errors_a.inc"
 include missing
