print format(sqr(0), "%.12f")           # expect: 0.000000000000
print format(sqr(0.25), "%.12f")        # expect: 0.500000000000
print format(sqr(1), "%.12f")           # expect: 1.000000000000
print format(sqr(2), "%.12f")           # expect: 1.414213562373
print format(sqr(16), "%.12f")          # expect: 4.000000000000
print format(sqr(1e10), "%.12f")        # expect: 100000.000000000000
print format(sqr(12345.678), "%.12f")   # expect: 111.111106555555
