outside = 0
below = 0
for i = 1 to 500
  r = rand(-5)
  if r > 0 then
    outside = outside + 1
  endif
  if r < -5 then
    outside = outside + 1
  endif
  if r < 0 then
    below = 1
  endif
next
print outside; below   # expect: 0.0000001.000000
