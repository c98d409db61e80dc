for i = 1 to 3 step 2  # problem: step-clause@16
  print i
next
