print "a"           # expect: a
next                # expect error 55: Illegal NEXT statement.
print "b"           # expect: b
