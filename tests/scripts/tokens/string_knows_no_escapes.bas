print "a\n\"        # expect: a\n\
