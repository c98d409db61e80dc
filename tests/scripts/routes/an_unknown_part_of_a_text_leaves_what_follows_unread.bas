dim p[3]
p[2] = "third"
for r = 1 to 3
  p[0] = "first"
  x = "a" + part + p[2]
  # expect error 3 anywhere: No expression present
  # expect error 3 anywhere: No expression present
  # expect error 3 anywhere: No expression present
  # expect error 3 anywhere: No expression present
  print x; p
  if r = 2 then
    part = "b"
  endif
next
# expect: afirst
# expect: afirst
# expect: abthirdthird
