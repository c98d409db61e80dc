a[0] = 1
print a[0]
