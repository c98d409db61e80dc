a = 1
b = 2
if a = 1 and b = 2 then  # problem: logical-word@10
  print "y"
endif
