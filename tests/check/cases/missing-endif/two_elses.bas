if 1 = 1 then
  print "first"
else  # problem: missing-endif@1
  print "second"
else
  print "third"
endif
# runs: error
