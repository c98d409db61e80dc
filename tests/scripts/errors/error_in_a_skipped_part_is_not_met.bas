if 1 = 2 then
  next
endif
print "on"          # expect: on
