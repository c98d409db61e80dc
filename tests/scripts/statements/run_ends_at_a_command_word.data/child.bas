print "child"
