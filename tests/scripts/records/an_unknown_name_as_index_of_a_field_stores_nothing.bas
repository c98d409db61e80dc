type Track
  v[3] as integer
endtype
dim t as Track
t.v[0] = 5
t.v[nope] = 6  # expect error 1: Syntax error
print t.v[0]   # expect: 5
