goto inside
if 1 = 2 then
  print "skipped"
inside:
  print "a"         # expect: a
else
  print "skipped"
endif
print "on"          # expect: on
