if 1 < 2 then print "a" endif   # expect: a
if 2 < 2 then print "b" endif
if 2 > 1 then print "c" endif   # expect: c
if 2 > 2 then print "d" endif
if 2 <= 2 then print "e" endif  # expect: e
if 3 <= 2 then print "f" endif
if 2 => 2 then print "g" endif  # expect: g
if 1 => 2 then print "h" endif
