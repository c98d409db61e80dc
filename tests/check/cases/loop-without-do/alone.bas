print "a"
loop  # problem: loop-without-do@1
