print "a
b"
