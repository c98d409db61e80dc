if 1 = 2 then
  # endif
  rem endif
  rem else
  # if
  rem if
  print "skipped"
endif
print "on"          # expect: on
