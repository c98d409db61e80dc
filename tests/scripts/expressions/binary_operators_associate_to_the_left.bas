print 10 - 2 - 3    # expect: 5.000000
print 100 / 10 / 5  # expect: 2.000000
print 100 / 10 * 5  # expect: 50.000000
print 10 - 2 + 3    # expect: 11.000000
