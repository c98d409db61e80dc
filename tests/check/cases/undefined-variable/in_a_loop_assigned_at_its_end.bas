for i = 1 to 3
  if i > 1 then
    print last + 1
  endif
  last = i
next
