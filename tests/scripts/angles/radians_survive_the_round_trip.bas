wrong = 0
for i = -6200 to 6200
  r = i / 1000
  if abs(dms2rad(rad2dms(r)) - r) > 0.00000005 then
    wrong = wrong + 1
  endif
next
print wrong   # expect: 0.000000
