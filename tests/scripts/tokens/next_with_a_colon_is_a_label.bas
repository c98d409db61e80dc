for i = 1 to 3
  print "body"      # expect: body
next: print "on"    # expect: on
