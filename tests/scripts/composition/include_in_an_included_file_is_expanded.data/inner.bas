print "inner"
