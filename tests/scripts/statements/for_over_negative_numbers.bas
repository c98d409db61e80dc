for i = -1 to 1
  print i
next
# expect: -1.000000
# expect: 0.000000
# expect: 1.000000
