type Bytes
  c[3] as char
  i as integer
endtype
dim r as Bytes
r.i = 1000
r.c[0] = 1
r.c[1] = 300
r.c[2] = 3
r.c[1] = 2
print r.c[0]; r.c[1]; r.c[2]; " "; r.i  # expect: 123 1000
