wrong = 0
for d = 0 to 359
  for m = 0 to 59
    v = d + m / 100 + 0.0030
    if abs(rad2dms(dms2rad(v)) - v) > 0.00000001 then
      wrong = wrong + 1
    endif
  next
next
print wrong   # expect: 0.000000
