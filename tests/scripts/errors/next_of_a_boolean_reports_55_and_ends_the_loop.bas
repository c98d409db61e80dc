open "made.txt" for output as 1 text
for i = 1 to 3
  print "body"      # expect: body
  i = iseof(1)
next                # expect error 55: Illegal NEXT statement.
print "on"          # expect: on
