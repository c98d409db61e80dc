x = 1
for i = 1 to 3
  x = x + 1
  print x
  if i = 1 then x = "a" endif
  if i = 2 then x = int(7) endif
next
# expect: 2.000000
# expect: a1.000000
# expect: 8.000000
