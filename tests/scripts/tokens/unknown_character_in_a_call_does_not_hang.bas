call _              # expect error 1: Syntax error
# expect error 18: Unexpected operator
