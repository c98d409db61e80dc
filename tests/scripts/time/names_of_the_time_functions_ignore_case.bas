if YEAR() = Year() then
  print "same"   # expect: same
endif
