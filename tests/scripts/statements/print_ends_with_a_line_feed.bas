print "a"           # expect: a
print "b"           # expect: b
