for i = 1 to 3
  print i;
next
# expect: 1.0000002.0000003.000000
print
print i             # expect: 4.000000
