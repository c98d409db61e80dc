for i = 1 to 3
  print "body"      # expect: body
  i = Nothing
next                # expect error 55: Illegal NEXT statement.
print "on"          # expect: on
