if 1 = 2
  print "body"      # expect: body
# expect error 9: Expected: THEN
endif
