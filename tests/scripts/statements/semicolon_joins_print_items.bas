print "a"; "b"; 5; "c"  # expect: ab5.000000c
