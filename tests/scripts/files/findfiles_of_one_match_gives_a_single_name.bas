r = findfiles("box/*.dat", 0)
print ubound("r"); " "; r   # expect: 1 other.dat
r = findfiles("box/other.dat", "unread")
print r                     # expect: other.dat
