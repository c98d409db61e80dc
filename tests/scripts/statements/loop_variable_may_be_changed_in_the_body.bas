for i = 1 to 10
  print i
  i = i + 4
next
# expect: 1.000000
# expect: 6.000000
print i             # expect: 11.000000
