open "data" as 1
r = read(1, 4, 1)
print ubound("r")                             # expect: 4
print r[0]; " "; r[1]; " "; r[2]; " "; r[3]   # expect: 0 127 128 255
