a = 5
if a ! 5 then  # problem: comparison-operator@6
  print "five"
endif
