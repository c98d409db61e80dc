# expect: 7.000000
print 7#
