x = 1
for i = 1 to 3
  if i = 3 then x = "a" endif
  y = x - 1         # expect error 14: Incorrect location of the RETURN statement
  print y
next
# expect: 0.000000
# expect: 0.000000
# expect: a
