type Every
  c as char
  i as integer
  f as float
  d as double
  s as string
  t[10] as string
  a[3] as integer
endtype
dim r as Every
print r.c; r.i             # expect: 00
print r.f; " "; r.d        # expect: 0.000000 0.000000
print "["; r.s; r.t; "]"   # expect: []
print r.a[0]; r.a[1]; r.a[2]  # expect: 000
