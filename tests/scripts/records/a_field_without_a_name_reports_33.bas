type Bad
  a as integer
  "" as integer  # expect error 33: Invalid field name
  b as integer
endtype
print "behind"  # expect: behind
dim r as Bad    # expect error 1: Syntax error
