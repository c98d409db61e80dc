x = Nothing
y = x + 1    # expect error 18: Unexpected operator
print "on"   # expect: on
