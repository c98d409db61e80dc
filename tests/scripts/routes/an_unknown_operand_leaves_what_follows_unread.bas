dim p[3]
p[2] = "third"
for r = 1 to 2
  p[0] = "first"
  x = nope + p[2]
  # expect error 3 anywhere: No expression present
  # expect error 3 anywhere: No expression present
  # expect error 3 anywhere: No expression present
  # expect error 3 anywhere: No expression present
  print p
next
# expect: first
# expect: first
