type Bad
  u as
  v as integer  # expect error 1: Syntax error
endtype
print "behind"  # expect: behind
