type T
  x = integer  # problem: word-syntax@3
endtype
