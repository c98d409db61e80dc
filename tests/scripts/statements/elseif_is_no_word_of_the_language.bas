# The word is read as a variable inside the branch that runs.
if 1 = 1 then
  print "a"         # expect: a
elseif 1 = 2 then   # expect error 3: No expression present
# expect error 18: Unexpected operator
endif
