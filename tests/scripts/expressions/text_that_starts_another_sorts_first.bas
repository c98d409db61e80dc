if "ab" < "abc" then print "a" endif     # expect: a
if "abc" > "ab" then print "b" endif     # expect: b
if "" < "a" then print "c" endif         # expect: c
