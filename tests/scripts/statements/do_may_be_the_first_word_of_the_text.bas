do while ubound("a") < 3
  print "body"      # expect: body
  dim a[3]
loop
print "on"          # expect: on
