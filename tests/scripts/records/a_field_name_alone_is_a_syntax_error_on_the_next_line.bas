type Bad
  u
  v as integer  # expect error 1: Syntax error
endtype
print "behind"  # expect: behind
dim r as Bad    # expect error 1: Syntax error
