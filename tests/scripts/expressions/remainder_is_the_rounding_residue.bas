# Deliberate: the quotient is not truncated.
print 7 % 2         # expect: 0.000000
print 10 % 4        # expect: 0.000000
