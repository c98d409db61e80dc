print len(format(1, "%5000d"))      # expect: 5000
print len(format("x", "%-5000s"))   # expect: 5000
print len(format(1, "%.500f"))      # expect: 502
