type T
  x[nope] as char  # problem: undefined-variable@5
endtype
