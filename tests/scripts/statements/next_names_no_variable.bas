# The name behind "next" is read as the next statement once the loop has ended.
for i = 1 to 3
  print "body"
# expect: body
# expect: body
# expect: body
next i              # expect error 3: No expression present
print "on"          # expect: on
