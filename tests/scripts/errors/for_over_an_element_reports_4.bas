for a[0] = 1 to 2   # expect error 4: Expected: =
# expect error 18: Unexpected operator
