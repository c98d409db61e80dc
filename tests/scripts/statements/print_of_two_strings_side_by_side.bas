print "a" "b"       # expect: a
# expect error 18: Unexpected operator
