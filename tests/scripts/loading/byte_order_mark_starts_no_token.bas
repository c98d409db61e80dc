print "a"           # expect error 18: Unexpected operator
