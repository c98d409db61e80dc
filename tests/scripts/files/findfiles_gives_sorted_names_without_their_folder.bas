r = findfiles("box/*.txt", 0)
print ubound("r")                  # expect: 3
print r[0]; " "; r[1]; " "; r[2]   # expect: alpha.txt beta.txt gamma.txt
