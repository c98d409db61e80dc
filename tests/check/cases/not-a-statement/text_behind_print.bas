print "a" "b"  # problem: not-a-statement@11
