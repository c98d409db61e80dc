a = 1
if (a = 1) then  # problem: comparison-in-expression@7
  print "y"
endif
