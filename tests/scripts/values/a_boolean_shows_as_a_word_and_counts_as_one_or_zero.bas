open "bytes" as 1
b = iseof(1)
print b        # expect: False
print val(b)   # expect: 0.000000
print int(b)   # expect: 0
r = read(1, 2, 1)
b = iseof(1)
print b        # expect: True
print val(b)   # expect: 1.000000
print int(b)   # expect: 1
print b + 1    # expect: 2.000000
print str(b)   # expect: True
print len(b)   # expect: 0.000000
