type Bad
  a as integer
  u (3) as integer  # expect error 1: Syntax error
  b as integer
endtype
print "behind"  # expect: behind
dim r as Bad    # expect error 1: Syntax error
