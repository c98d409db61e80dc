for i = 1 to 3
  if i = 2 then
    end
  endif
  print i           # expect: 1.000000
next
