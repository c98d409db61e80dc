a = 1
if a = 1  # problem: missing-then@1
  print "y"
endif
