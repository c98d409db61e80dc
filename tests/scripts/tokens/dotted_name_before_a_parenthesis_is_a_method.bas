a = 5
x = a.b()           # expect error 31: Invalid argument type
print "on"          # expect: on
