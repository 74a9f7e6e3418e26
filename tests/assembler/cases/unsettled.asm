; An address that moves with itself is refused.
 .ORG Here + 1
Here .DB 1
