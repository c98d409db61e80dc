if 1 = 2 then
  _ . \ `
  print "skipped"
endif
print "on"          # expect: on
