for 5               # expect error 4: Expected: =
print "on"          # expect: on
