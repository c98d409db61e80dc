n = 2
for i = n - 1 to n * 2 - 2
  print i
next
# expect: 1.000000
# expect: 2.000000
