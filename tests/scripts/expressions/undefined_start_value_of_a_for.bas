for i = nope to 3   # expect error 10: Expected: TO
# expect error 18: Unexpected operator
