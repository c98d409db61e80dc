a = 1
if a = 1 then
  print "y"
else  # problem: missing-endif@1
  print "z"
# runs: error
