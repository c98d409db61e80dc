open "data" as 1 text
r = readlist(1, ",")
print ubound("r"); " "; r   # expect: 1 12.500000
r = readlist(1, "")
print ubound("r"); " "; r   # expect: 1 3.000000
