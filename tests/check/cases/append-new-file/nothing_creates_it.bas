open "log.txt" for append as 1 text  # problem: append-new-file@20
close 1
# runs: error
