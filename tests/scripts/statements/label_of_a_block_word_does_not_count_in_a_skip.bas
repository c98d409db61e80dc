if 1 = 2 then
endif:
  print "skipped"
endif
print "on"          # expect: on
