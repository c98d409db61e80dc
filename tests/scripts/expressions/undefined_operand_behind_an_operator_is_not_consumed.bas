# expect: 2.000000
x = 2 + nope        # expect error 3: No expression present
print x
