x = 0 / 0
if x = x then print "a" endif
if x < x then print "b" endif
if x <= x then print "c" endif
if x <> x then print "d" endif           # expect: d
