do while nope < 3   # expect error 0: Error loading resource string.
  print "skipped"
loop
print "on"          # expect: on
