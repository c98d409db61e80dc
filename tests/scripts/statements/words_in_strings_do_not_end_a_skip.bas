if 1 = 2 then
  print "endif"
  print "else"
endif
print "on"          # expect: on
