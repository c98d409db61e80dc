a.b = 5             # expect error 37: Undefined variable
print "on"          # expect: on
