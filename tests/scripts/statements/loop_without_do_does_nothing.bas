print "a"           # expect: a
loop
print "b"           # expect: b
