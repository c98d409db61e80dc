print max(min(1, 2), abs(-3)) + 1   # expect: 4.000000
print 2 * int(2.7) + 1              # expect: 5.000000
print -abs(-2)                      # expect: -2.000000
print int(sqr(16)) / 8              # expect: 0.500000
