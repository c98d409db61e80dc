a = 1
if a = 1 then
  print "1"
elseif a = 2 then  # problem: else-if@1
  print "2"
endif
# runs: error
