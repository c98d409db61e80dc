print("a")          # expect: a
print(2)            # expect: 2.000000
if(1) = 1 then
  print "b"         # expect: b
endif
