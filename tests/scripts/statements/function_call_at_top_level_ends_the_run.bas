print "a"           # expect: a
len("abc")          # expect error 18: Unexpected operator
print "never"
