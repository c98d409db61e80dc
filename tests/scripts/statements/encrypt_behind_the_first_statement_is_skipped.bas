print "a"           # expect: a
encrypt print "b"
1, 2, 3             # expect error 18: Unexpected operator
