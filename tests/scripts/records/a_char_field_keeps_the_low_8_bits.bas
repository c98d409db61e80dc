type Small
  c as char
endtype
dim r as Small
r.c = 300
print r.c  # expect: 44
r.c = 200
print r.c  # expect: -56
r.c = 127
print r.c  # expect: 127
r.c = 128
print r.c  # expect: -128
r.c = 255
print r.c  # expect: -1
r.c = 256
print r.c  # expect: 0
r.c = -1
print r.c  # expect: -1
r.c = -129
print r.c  # expect: 127
r.c = -1.9
print r.c  # expect: -1
r.c = 0.9
print r.c  # expect: 0
