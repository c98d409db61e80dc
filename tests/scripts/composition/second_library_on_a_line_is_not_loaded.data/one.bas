print "one"
