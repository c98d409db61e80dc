if 1 = 1 then
  print "a"         # expect: a
else: print "b"     # expect: b
endif
