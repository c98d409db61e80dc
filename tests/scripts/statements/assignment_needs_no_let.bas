let x = 5           # expect error 3: No expression present
# expect error 18: Unexpected operator
