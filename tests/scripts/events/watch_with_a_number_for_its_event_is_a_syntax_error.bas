x = 1
watch create x 5  # expect error 1: Syntax error
watch create x print  # expect error 1: Syntax error
x = 2
print x  # expect: 2.000000
