map ,  # expect error 1: Syntax error
print maphas("m", "k")  # expect: False
