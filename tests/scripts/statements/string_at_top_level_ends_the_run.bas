print "a"           # expect: a
"text"              # expect error 18: Unexpected operator
print "never"
