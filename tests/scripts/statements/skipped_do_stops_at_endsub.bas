do while 1 = 2
  print "skipped"
endsub
print "on"          # expect: on
