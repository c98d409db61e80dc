global Count
for Count = 1 to 2
  print Count
next
# expect: 1.000000
# expect: 2.000000
