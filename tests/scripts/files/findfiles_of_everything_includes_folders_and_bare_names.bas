r = findfiles("box/*", 0)
print ubound("r"); " "; r[0]; " "; r[1]; " "; r[2]   # expect: 3 bare folder with.txt
r = findfiles("box/*.*", 0)
print ubound("r"); " "; r[0]; " "; r[1]; " "; r[2]   # expect: 3 bare folder with.txt
