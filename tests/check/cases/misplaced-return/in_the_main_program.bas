return  # problem: misplaced-return@1
print "on"
