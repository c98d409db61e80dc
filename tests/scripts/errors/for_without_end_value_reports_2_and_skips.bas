for i = 1 to        # expect error 2: Unbalanced parens
  print "skipped"
next
print "on"          # expect: on
