print "on"          # expect: on
to = 5              # expect error 18: Unexpected operator
