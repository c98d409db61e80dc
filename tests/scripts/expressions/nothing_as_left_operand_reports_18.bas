x = Nothing + 1     # expect error 18: Unexpected operator
print "on"          # expect: on
