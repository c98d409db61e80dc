print "a",
print "b"           # expect: a       b
