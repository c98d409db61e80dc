h = dbfcreate("t")
print h                     # expect: -1
names = findfiles("*.dbf", "")
print names                 # expect: 
