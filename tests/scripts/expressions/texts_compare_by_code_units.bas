if "a" < "b" then print "a" endif        # expect: a
if "Z" < "a" then print "b" endif        # expect: b
if "z" < "ä" then print "c" endif        # expect: c
if "10" < "9" then print "d" endif       # expect: d
if "😀" < "｡" then print "e" endif        # expect: e
