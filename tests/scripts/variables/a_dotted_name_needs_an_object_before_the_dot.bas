n = 5
x = n.colour   # expect error 31: Invalid argument type
print "on"     # expect: on
