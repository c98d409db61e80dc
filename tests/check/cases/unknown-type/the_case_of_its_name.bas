type Place
  x as integer
endtype
dim p as place  # problem: unknown-type@10
