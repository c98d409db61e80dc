dim a[3]
a[0] = 1
print ubound(a)  # problem: ubound-name@14
