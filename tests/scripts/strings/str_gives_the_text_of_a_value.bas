print str(2)              # expect: 2.000000
print str(int(2))         # expect: 2
print str("x")            # expect: x
print len(str(int(-2)))   # expect: 2
x = str(int(2)) + str(int(3))
print x                   # expect: 23
