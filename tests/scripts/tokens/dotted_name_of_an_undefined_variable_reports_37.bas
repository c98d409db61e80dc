print a.b           # expect:
# expect error 37: Undefined variable
print "on"          # expect: on
