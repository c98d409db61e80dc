x = nope()            # expect error 21: Undefined function name
print "["; x; "]"     # expect: []
call nope(1, "two")   # expect error 21: Undefined function name
print "on"            # expect: on
