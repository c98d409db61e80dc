x = (_)             # expect error 0: Error loading resource string.
# expect error 1: Syntax error
# expect error 18: Unexpected operator
