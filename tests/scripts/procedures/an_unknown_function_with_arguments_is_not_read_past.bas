print "before"
x = nope(1)
print "not reached"
