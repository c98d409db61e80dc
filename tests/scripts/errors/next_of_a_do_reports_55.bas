n = 0
do while n < 2
  n = n + 1
  print "body"      # expect: body
next                # expect error 55: Illegal NEXT statement.
loop
print "on"          # expect: on
