a = 1
if a = 1 = 1 then  # problem: missing-then@10
  print "y"
endif
