x = 1 = 1           # expect error 18: Unexpected operator
