# expect: a
# expect: -
print "a
-"b = 5
print b             # expect: 5.000000
