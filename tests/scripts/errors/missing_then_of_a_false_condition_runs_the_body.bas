if 1 = 2            # expect error 9: Expected: THEN
  print "body"      # expect: body
endif
