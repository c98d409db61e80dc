type Bad
  a as integer
  u[-1] as integer  # expect error 32: Incorrect array size
  b as integer
endtype
print "behind"  # expect: behind
dim r as Bad    # expect error 1: Syntax error
