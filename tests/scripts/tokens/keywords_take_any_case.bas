n = 0
do WHILE n < 2
  n = n + 1
loop
print n             # expect: 2.000000
