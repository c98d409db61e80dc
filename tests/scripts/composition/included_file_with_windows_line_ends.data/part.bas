print "a"
print "b"
