if 10 = "10" then print "a" endif        # expect: a
if "10" = 10 then print "b" endif
if "10.000000" = 10 then print "c" endif  # expect: c
if "10" = int(10) then print "d" endif   # expect: d
if 2 < "10" then print "e" endif         # expect: e
if "2" < "10" then print "f" endif
