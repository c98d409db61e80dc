if 0.1 + 0.2 ~~ 0.3 then print "a" endif      # expect: a
if 0.1 + 0.2 = 0.3 then print "b" endif
if 0 ~~ 0.0000000000009 then print "c" endif  # expect: c
if 0 ~~ 0.0000000000011 then print "d" endif
if 0.0000000000009 ~~ 0 then print "e" endif  # expect: e
if 0.0000000000011 ~~ 0 then print "f" endif
