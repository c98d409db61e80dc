type Track
  v[3] as integer
  last as integer
endtype
dim t as Track
t.last = 9
t.v[3] = 1   # expect error 36: Array index is out of bounds
t.v[-1] = 1  # expect error 36: Array index is out of bounds
t.v[2] = 4
print t.v[0]; t.v[1]; t.v[2]; t.last  # expect: 0049
t.last[1] = 2  # expect error 36: Array index is out of bounds
t.last[0] = 3
print t.last   # expect: 3
