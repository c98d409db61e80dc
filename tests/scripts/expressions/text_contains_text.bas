if "abc" ~~ "b" then print "a" endif     # expect: a
if "abc" ~~ "abc" then print "b" endif   # expect: b
if "abc" ~~ "d" then print "c" endif
if "b" ~~ "abc" then print "d" endif
if "abc" ~~ "B" then print "e" endif
