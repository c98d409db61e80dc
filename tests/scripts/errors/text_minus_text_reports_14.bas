x = "ab" - "b"      # expect error 14: Incorrect location of the RETURN statement
print x             # expect: ab
