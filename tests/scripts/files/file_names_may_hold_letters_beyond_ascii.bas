open "größe €.txt" for output as 1
n = write(1, 65, 1)
close 1
r = findfiles("*€.txt", 0)
print r   # expect: größe €.txt
