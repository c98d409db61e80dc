a = 1
if a => 1 then print "y" endif
if a <= 1 then print "y" endif
if a <> 2 then print "y" endif
if a != 2 then print "y" endif
if a == 1 then print "y" endif
if a ~~ 1 then print "y" endif
