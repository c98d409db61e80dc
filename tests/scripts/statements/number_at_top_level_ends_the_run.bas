print "a"           # expect: a
5                   # expect error 18: Unexpected operator
print "never"
