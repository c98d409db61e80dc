print "a"
' two words  # problem: comment-mark@1
# runs: error
