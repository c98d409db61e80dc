for i = 0 to nope  # problem: undefined-variable@14
  print i
next
