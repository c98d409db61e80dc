a = 2
if a = 1 then print "y"  # problem: missing-endif@1
print "z"
# runs: error
