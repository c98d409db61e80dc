place: print "part"
