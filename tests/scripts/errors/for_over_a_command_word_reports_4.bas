for to              # expect error 4: Expected: =
print "on"          # expect: on
