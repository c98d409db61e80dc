for i = 1           # expect error 10: Expected: TO
print "on"          # expect: on
