print "part"
