x = 5
x[1] = 6   # expect error 36: Array index is out of bounds
print x    # expect: 5.000000
