r = findfiles("box\inner\*.txt", 0)
print r   # expect: alpha.txt
r = findfiles("BOX\Inner\*.txt", 0)
print r   # expect: alpha.txt
