if 1 = 1 then:      # expect error 9: Expected: THEN
  print "body"      # expect: body
endif
