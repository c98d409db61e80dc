for i = 2 to 1
  open "made.txt" for output as 1 text
  print "skipped"
next
print "on"          # expect: on
