print "a"           # expect: a
here:
print "b"           # expect: b
there: print "c"    # expect: c
