for i = 1 to 2
  print i
next i  # problem: loop-variable@6
