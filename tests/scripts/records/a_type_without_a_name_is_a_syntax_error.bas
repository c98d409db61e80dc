type ""  # expect error 1: Syntax error
  x as integer
endtype
print "behind"  # expect: behind
