a[1] = 5            # expect error 35: Undefined array variable
print ubound("a")   # expect: 0
