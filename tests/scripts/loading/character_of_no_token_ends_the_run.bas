print "a"           # expect: a
_                   # expect error 18: Unexpected operator
print "never"
