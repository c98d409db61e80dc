open "BOX/Fresh.txt" for output as 1
n = write(1, 65, 1)
close 1
r = findfiles("box/fresh.*", 0)
print r   # expect: Fresh.txt
