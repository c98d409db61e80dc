for i = 1 to 3
  x = "a" - 1       # expect error 14: Incorrect location of the RETURN statement
  # expect error 14: Incorrect location of the RETURN statement
  # expect error 14: Incorrect location of the RETURN statement
next
print "on"          # expect: on
