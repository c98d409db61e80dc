print abs(-1, 2)     # expect: 1.000000
print int(2.5, 7)    # expect: 2
print sqr(4, "x")    # expect: 2.000000
print loword(1, 2)   # expect: 1
