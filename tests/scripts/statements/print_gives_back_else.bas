a = 2
if a = 1 then print "x" else print "y" endif  # expect: y
if a = 2 then print "x" else print "y" endif  # expect: x
