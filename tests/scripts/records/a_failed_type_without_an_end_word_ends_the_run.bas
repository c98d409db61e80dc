print "before"  # expect: before
type Bad
  u as unicode  # expect error 1: Syntax error
print "not met"
