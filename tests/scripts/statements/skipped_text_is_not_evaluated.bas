if 1 = 2 then
  x = nofunction(
  5 ) then
  dim
endif
print "on"          # expect: on
