print format(atan(0), "%.12f")       # expect: 0.000000000000
print format(atan(0.5), "%.12f")     # expect: 0.463647609001
print format(atan(1), "%.12f")       # expect: 0.785398163397
print format(atan(-1), "%.12f")      # expect: -0.785398163397
print format(atan(1e10), "%.12f")    # expect: 1.570796326695
print format(atan(-1e10), "%.12f")   # expect: -1.570796326695
