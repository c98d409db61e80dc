if 1 = 1            # expect error 9: Expected: THEN
  print "body"      # expect: body
endif
