' print "a"         # expect: a
