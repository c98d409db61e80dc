for i = 1 to 3  # problem: missing-next@1
  print i
