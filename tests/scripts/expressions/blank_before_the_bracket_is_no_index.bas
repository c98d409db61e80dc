dim a[2]
a[0] = 5
a[1] = 6
print a [0]         # expect: 6.000000
# expect error 18: Unexpected operator
