for i = 1 to 2
  for j = 1 to 2
    print int(i); int(j)
  next
next
# expect: 11
# expect: 12
# expect: 21
# expect: 22
