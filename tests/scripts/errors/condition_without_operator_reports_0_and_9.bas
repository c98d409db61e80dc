# The word "then" is read in place of the operator.
if 1 then           # expect error 0: Error loading resource string.
# expect error 9: Expected: THEN
  print "body"      # expect: body
endif
