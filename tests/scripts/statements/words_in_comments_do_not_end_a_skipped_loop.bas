for i = 2 to 1
  # next
  rem next
  rem for
  # for
  print "skipped"
next
do while 1 = 2
  # loop
  rem loop
  rem do
  print "skipped"
loop
print "on"          # expect: on
