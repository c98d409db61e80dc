print "on"          # expect: on
text = 5            # expect error 18: Unexpected operator
