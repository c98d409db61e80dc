a = 5
print a.b           # expect:
# expect error 31: Invalid argument type
print "on"          # expect: on
