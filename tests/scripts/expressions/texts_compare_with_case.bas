if "abc" = "abc" then print "a" endif    # expect: a
if "abc" = "ABC" then print "b" endif
if "abc" <> "ABC" then print "c" endif   # expect: c
