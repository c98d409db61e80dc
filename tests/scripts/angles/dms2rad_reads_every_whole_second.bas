wrong = 0
for m = 0 to 59
  for s = 0 to 59
    x = dms2rad(12 + m / 100 + s / 10000) - (12 + m / 60 + s / 3600) * 0.017453292519943295
    if abs(x) > 0.000000001 then
      wrong = wrong + 1
    endif
  next
next
print wrong   # expect: 0.000000
