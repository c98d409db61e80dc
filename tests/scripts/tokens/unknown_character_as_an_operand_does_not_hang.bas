x = 1 + _           # expect error 0: Error loading resource string.
# expect error 18: Unexpected operator
