type Empty
endtype
dim e as Empty
e.x = 1  # expect error 37: Undefined variable
