call f()
print "after"
end
sub f()
  print "in"
end sub  # problem: end-if@1
# runs: silent
