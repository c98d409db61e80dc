a = 2
if a * 2 + 1 = 10 / 2 then print "a" endif  # expect: a
if -a < -1 then print "b" endif          # expect: b
if (a) = (2) then print "c" endif        # expect: c
