if Nothing = Nothing then print "a" endif
if Nothing <> Nothing then print "b" endif
if Nothing = 0 then print "c" endif
if 0 = Nothing then print "d" endif      # expect: d
