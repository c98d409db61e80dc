for _ = 1 to 3      # expect error 4: Expected: =
# expect error 18: Unexpected operator
