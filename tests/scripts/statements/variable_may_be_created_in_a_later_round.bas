for i = 1 to 3
  if i = 2 then late = 5 endif
  x = late          # expect error 3: No expression present
  print "body"
next
# expect: body
# expect: body
# expect: body
