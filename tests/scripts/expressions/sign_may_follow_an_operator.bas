print 2 * -3        # expect: -6.000000
print 2--3          # expect: 5.000000
print 2 - +3        # expect: -1.000000
print -(2 + 3)      # expect: -5.000000
