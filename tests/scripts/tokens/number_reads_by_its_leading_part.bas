print 12abc         # expect: 12.000000
print 1.2.3         # expect: 1.200000
print 0x10          # expect: 0.000000
print 1e            # expect: 1.000000
