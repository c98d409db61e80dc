n = 0
for i = 1 to 300000
  n = n + i
next
print n             # expect: 45000150000.000000
