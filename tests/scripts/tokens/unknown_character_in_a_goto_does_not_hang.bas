goto _              # expect error 7: Duplicate label
# expect error 18: Unexpected operator
