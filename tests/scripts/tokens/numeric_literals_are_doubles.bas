print 5             # expect: 5.000000
print int(5)        # expect: 5
