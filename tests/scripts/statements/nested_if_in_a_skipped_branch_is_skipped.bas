if 1 = 2 then
  if 1 = 1 then
    print "a"
  else
    print "b"
  endif
  print "c"
else
  print "d"         # expect: d
endif
