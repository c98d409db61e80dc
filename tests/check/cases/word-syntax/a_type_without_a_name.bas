type  # problem: word-syntax@1
  x as integer
endtype
