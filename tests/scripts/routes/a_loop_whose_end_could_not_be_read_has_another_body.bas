for r = 1 to 4
  if r = 3 then
    last = 1
  endif
  for i = 0 to last
    # expect error 3 anywhere: No expression present
    # expect error 3 anywhere: No expression present
    print i
  next
next
# expect: 0.000000
# expect: 0.000000
# expect: 0.000000
# expect: 1.000000
# expect: 0.000000
# expect: 1.000000
