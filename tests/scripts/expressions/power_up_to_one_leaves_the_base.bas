# Deliberate: the exponent is a count of multiplications.
print 2^0.5         # expect: 2.000000
print 2^-1          # expect: 2.000000
print 7^-3.5        # expect: 7.000000
