done = 1
if done then  # problem: missing-comparison@9
  print "y"
endif
