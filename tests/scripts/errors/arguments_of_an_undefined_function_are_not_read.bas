x = nofunction(1)   # expect error 21: Undefined function name
# expect error 18: Unexpected operator
