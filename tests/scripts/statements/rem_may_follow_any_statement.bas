x = 5 rem x = 6
print x             # expect: 5.000000
if x = 5 then rem print "a"
  print "b"         # expect: b
endif
for i = 1 to 2 rem print "a"
  print "c"
next rem print "a"
# expect: c
# expect: c
