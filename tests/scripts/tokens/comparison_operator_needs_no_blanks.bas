a = 1
b = 2
if a<=b then
  print "yes"       # expect: yes
endif
