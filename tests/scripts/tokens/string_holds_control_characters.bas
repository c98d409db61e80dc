print "a	b"       # expect: a	b
