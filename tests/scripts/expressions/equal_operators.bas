if 1 = 1 then print "a" endif   # expect: a
if 1 == 1 then print "b" endif  # expect: b
if 1 = 2 then print "c" endif
if 1 == 2 then print "d" endif
