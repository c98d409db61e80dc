dim a[3]
y = a[nope]   # expect error 1: Syntax error
print "on"    # expect: on
