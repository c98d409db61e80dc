for i = 1 to 2  # problem: missing-next@1
  print i
loop  # problem: crossed-loops@1
