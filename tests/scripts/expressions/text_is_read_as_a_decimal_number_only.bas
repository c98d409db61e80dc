print 0 + "0x10"    # expect: 0.000000
print 0 + "inf"     # expect: 0.000000
print 0 + "nan"     # expect: 0.000000
print 0 + " -3.5e2z"  # expect: -350.000000
