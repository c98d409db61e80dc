a = 1
if a = 1 then print "y" else print "z" endif
