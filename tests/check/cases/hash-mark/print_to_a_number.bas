print #1, "x"
# problem: hash-mark@7
