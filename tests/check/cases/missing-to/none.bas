for i = 1 10  # problem: missing-to@11
  print i
next
