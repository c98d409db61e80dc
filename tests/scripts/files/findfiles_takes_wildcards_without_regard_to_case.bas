r = findfiles("box/A*.TXT", 0)
print ubound("r"); " "; r[0]; " "; r[1]   # expect: 2 a1.txt a22.txt
r = findfiles("box/a?.txt", 0)
print r                                   # expect: a1.txt
r = findfiles("box/?2*", 0)
print r                                   # expect: a22.txt
