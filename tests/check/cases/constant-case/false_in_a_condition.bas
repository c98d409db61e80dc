x = 0
if x = FALSE then  # problem: constant-case@8
  print "n"
endif
