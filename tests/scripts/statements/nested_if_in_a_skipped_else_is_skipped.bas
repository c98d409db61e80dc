if 1 = 1 then
  print "a"         # expect: a
else
  if 1 = 1 then
    print "b"
  else
    print "c"
  endif
  print "d"
endif
print "on"          # expect: on
