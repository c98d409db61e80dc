declare function absolute lib "libc.so.6" alias "labs" (byval a as integer) as integer
print labs(1, 2)  # problem: procedure-arguments@7
