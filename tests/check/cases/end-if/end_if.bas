a = 1
if a = 1 then  # problem: missing-endif@1
  print "1"
end if  # problem: end-if@1
print "2"  # problem: unreachable-code@1
# runs: silent
