type T
  x as integer
endtype
dim r as T
r = 1  # problem: unset-read@1
