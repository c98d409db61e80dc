print "two"
