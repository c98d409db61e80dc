dim a[3]
x = Nothing
a[0] = "first"
y = a[x]     # expect error 1: Syntax error
print "on"   # expect: on
