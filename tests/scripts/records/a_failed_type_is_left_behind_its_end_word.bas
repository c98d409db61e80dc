type Bad
  u as unicode  # expect error 1: Syntax error
  # endtype
  rem endtype
  goto nowhere
  next
endtype print "same line"  # expect: same line
print "behind"             # expect: behind
