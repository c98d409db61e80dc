a = repeat("a", 33554432)
a = a + a
print len(a)        # expect: 67108864
