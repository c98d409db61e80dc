do output           # expect error 54: "While" keyword is missing.
print "on"          # expect: on
