if "a" < "a" then print "a" endif
if "a" > "a" then print "b" endif
if "a" <= "a" then print "c" endif       # expect: c
if "a" => "a" then print "d" endif       # expect: d
