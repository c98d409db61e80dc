# Deliberate: ">=" is no operator.  Its right side is then found where "then" belongs.
if 2 >= 1 then      # expect error 0: Error loading resource string.
# expect error 9: Expected: THEN
  print "body"      # expect: body
endif
