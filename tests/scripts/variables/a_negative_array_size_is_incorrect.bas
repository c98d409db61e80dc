dim a[-1]           # expect error 32: Incorrect array size
print ubound("a")   # expect: 0
