print "a" + "b"  # problem: print-literal@11
