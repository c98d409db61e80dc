print format(log2(1), "%.12f")      # expect: 0.000000000000
print format(log2(2), "%.12f")      # expect: 1.000000000000
print format(log2(8), "%.12f")      # expect: 3.000000000000
print format(log2(1024), "%.12f")   # expect: 10.000000000000
print format(log2(0.5), "%.12f")    # expect: -1.000000000000
print format(log2(10), "%.12f")     # expect: 3.321928094887
