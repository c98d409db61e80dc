x = 1 / 0
if x ~~ x then print "a" else print "b" endif  # expect: b
if x = x then print "c" endif                  # expect: c
