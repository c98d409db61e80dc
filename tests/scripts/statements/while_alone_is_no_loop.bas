while 1 = 2         # expect error 18: Unexpected operator
loop
