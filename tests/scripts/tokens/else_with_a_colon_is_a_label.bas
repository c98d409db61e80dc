if 1 = 2 then
  print "a"
else: print "b"
endif
print "on"          # expect: on
