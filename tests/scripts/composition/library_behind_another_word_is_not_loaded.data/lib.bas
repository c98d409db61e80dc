print "library"
