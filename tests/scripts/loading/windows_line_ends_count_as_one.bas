print "a"           # expect: a

if 1 = 1 then
  print "b"         # expect: b
endif


print "c"           # expect: c
