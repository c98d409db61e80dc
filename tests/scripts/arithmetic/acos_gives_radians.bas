print format(acos(0), "%.12f")       # expect: 1.570796326795
print format(acos(0.5), "%.12f")     # expect: 1.047197551197
print format(acos(1), "%.12f")       # expect: 0.000000000000
print format(acos(-1), "%.12f")      # expect: 3.141592653590
print format(acos(-0.25), "%.12f")   # expect: 1.823476581937
