print "a"           # expect: a
while               # expect error 18: Unexpected operator
print "never"
