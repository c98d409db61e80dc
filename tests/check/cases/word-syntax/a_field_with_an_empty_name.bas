type T
  "" as integer  # problem: word-syntax@3
endtype
