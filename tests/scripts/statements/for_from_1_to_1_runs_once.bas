for i = 1 to 1
  print "body"      # expect: body
next
print "on"          # expect: on
