open "data" as 1
r = read(1, 3, 4)
print r[0]; " "; r[1]; " "; r[2]   # expect: 67305985 -1 -2147483648
