x = abs(nope)   # expect error 22: Incorrect function call
print "on"      # expect: on
