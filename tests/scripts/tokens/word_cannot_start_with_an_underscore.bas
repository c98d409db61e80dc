_a = 5              # expect error 18: Unexpected operator
