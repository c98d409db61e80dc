if 1=1then          # expect error 9: Expected: THEN
  print "body"      # expect: body
endif
