print int(-7)            # expect: -7
print int(0)             # expect: 0
print int(2147483647)    # expect: 2147483647
print int(-2147483648)   # expect: -2147483648
print len("abc")         # expect: 3
