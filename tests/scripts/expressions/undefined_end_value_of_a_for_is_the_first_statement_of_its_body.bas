for i = -1 to nope  # expect error 3: No expression present
# expect error 3: No expression present
  print "body"      # expect: body
  # expect: body
next
