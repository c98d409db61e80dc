print format(log(1), "%.12f")                   # expect: 0.000000000000
print format(log(2.718281828459045), "%.12f")   # expect: 1.000000000000
print format(log(10), "%.12f")                  # expect: 2.302585092994
print format(log(0.5), "%.12f")                 # expect: -0.693147180560
print format(log(1e10), "%.12f")                # expect: 23.025850929940
