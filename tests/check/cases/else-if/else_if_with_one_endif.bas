a = 1
if a = 1 then
  print "1"
else if a = 2 then  # problem: else-if@1
  print "2"
endif
# runs: error
