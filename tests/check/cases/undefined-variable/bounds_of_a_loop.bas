for i = nope to 3  # problem: undefined-variable@9
  print i  # problem: unset-read@9
next
