type Bad
  # answer: cancel
  u as unicode  # expect error 1: Syntax error
endtype
print "not met"
