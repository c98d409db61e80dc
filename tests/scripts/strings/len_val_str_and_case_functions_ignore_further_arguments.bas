print len("abc", 1)     # expect: 3
print val("12", 1)      # expect: 12.000000
print str(int(2), 1)    # expect: 2
print lcase("ABC", 1)   # expect: abc
print ucase("abc", 1)   # expect: ABC
