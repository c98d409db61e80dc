if 1 = 1 then print "a" endif print "b"
# expect: a
# expect: b
if 1 = 2 then print "c" endif print "d"
# expect: d
