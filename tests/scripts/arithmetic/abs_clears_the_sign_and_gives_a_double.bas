print abs(-2)        # expect: 2.000000
print abs(2)         # expect: 2.000000
print abs(int(-7))   # expect: 7.000000
print abs(-0)        # expect: 0.000000
print abs(-1 / 0)    # expect: inf
print abs("-3kg")    # expect: 3.000000
