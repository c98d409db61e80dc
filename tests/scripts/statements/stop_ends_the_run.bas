print "a"           # expect: a
stop
print "b"
