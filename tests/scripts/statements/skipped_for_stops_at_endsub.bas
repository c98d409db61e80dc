for i = 2 to 1
  print "skipped"
endsub
print "on"          # expect: on
