global g
global h
h = 1
for r = 1 to 4
  g = (h)
  print g
  if r = 2 then
    h = "7 days"
  endif
next
# expect: 1.000000
# expect: 1.000000
# expect: 7 days
# expect: 7 days
