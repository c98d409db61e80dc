type T
  x as integer
endtype
dim Place as T
print place.x  # problem: undefined-variable@7
