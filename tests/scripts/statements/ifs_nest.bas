for i = 1 to 3
  if i = 1 then
    print "one"     # expect: one
  else
    if i = 2 then
      print "two"   # expect: two
    else
      print "more"  # expect: more
    endif
  endif
next
