x = "a" - "b" - "c"  # expect error 14: Incorrect location of the RETURN statement
# expect error 14: Incorrect location of the RETURN statement
print x             # expect: a
