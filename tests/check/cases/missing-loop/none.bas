a = 1
do while a < 1  # problem: missing-loop@1
  print "never"
