print "never"  # problem: byte-order-mark@1
