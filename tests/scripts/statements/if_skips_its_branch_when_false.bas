if 1 = 2 then
  print "a"
endif
print "on"          # expect: on
