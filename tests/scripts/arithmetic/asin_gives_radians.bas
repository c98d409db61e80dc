print format(asin(0), "%.12f")       # expect: 0.000000000000
print format(asin(0.5), "%.12f")     # expect: 0.523598775598
print format(asin(1), "%.12f")       # expect: 1.570796326795
print format(asin(-1), "%.12f")      # expect: -1.570796326795
print format(asin(-0.25), "%.12f")   # expect: -0.252680255142
