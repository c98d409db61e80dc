for i = 1 to 3
  print "body"      # expect: body
  i = "a"
next                # expect error 55: Illegal NEXT statement.
print "on"          # expect: on
next
# expect error 55: Illegal NEXT statement.
