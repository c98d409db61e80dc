if 1 = 2 then
  print "a"
else: print "b"
endif
if 1 = 1 then
  print "c"         # expect: c
else: print "d"     # expect: d
endif
