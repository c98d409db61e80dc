print "on"          # expect: on
10: print "never"   # expect error 18: Unexpected operator
