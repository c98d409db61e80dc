for i = 0.5 to 2.4
  print i
next
# expect: 0.500000
# expect: 1.500000
print i             # expect: 2.500000
