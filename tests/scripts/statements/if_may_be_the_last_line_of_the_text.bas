print "a"           # expect: a
if 1 = 1 then print "b" endif  # expect: b
