dim a[3]
y = a[0 1]   # expect error 1: Syntax error
print "on"   # expect: on
