a = 1
if a >= 1 then  # problem: comparison-operator@6
  print "y"
endif
