wrong = 0
for d = 0 to 359
  for m = 0 to 59
    x = dms2rad(d + m / 100) - (d + m / 60) * 0.017453292519943295
    if abs(x) > 0.000000001 then
      wrong = wrong + 1
    endif
  next
next
print wrong   # expect: 0.000000
