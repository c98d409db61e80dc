n = 0
again:
do while n < 3
  n = n + 1
  goto again
loop
print n             # expect: 3.000000
