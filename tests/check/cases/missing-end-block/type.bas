type T  # problem: missing-end-block@1
  x as integer
