r = findfiles("*.dat", 0)
print r   # expect: only.dat
