print len(12345)     # expect: 0.000000
print len(int(5))    # expect: 0.000000
print len(Nothing)   # expect: 0.000000
