if "a5.000000b" ~~ 5 then print "a" endif  # expect: a
if "a5b" ~~ 5 then print "b" endif
