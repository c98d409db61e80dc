if 1 > -1 then print "a" endif           # expect: a
if 1 =-1 then print "b" endif
if -1 =-1 then print "c" endif           # expect: c
if 1 =+1 then print "d" endif            # expect: d
