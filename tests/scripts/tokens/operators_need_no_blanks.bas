x=2*3+1
if x=7 then
  print x-2*3       # expect: 1.000000
endif
