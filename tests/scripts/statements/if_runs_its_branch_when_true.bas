if 1 = 1 then
  print "a"         # expect: a
endif
print "on"          # expect: on
