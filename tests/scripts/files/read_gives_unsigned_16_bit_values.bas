open "data" as 1
r = read(1, 3, 2)
print ubound("r")                  # expect: 3
print r[0]; " "; r[1]; " "; r[2]   # expect: 513 32768 65535
