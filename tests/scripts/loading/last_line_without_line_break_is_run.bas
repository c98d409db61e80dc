# expect: a
print "a"