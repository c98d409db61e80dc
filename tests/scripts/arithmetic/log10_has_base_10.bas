print format(log10(1), "%.12f")      # expect: 0.000000000000
print format(log10(10), "%.12f")     # expect: 1.000000000000
print format(log10(1000), "%.12f")   # expect: 3.000000000000
print format(log10(0.5), "%.12f")    # expect: -0.301029995664
print format(log10(1e10), "%.12f")   # expect: 10.000000000000
