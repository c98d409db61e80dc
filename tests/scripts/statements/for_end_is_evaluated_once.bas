n = 2
for i = 1 to n
  n = 5
  print i
next
# expect: 1.000000
# expect: 2.000000
