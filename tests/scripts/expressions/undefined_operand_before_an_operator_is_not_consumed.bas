x = nope + 1        # expect error 3: No expression present
# expect error 18: Unexpected operator
