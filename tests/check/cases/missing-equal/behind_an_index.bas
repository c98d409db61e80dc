dim a[3]
a[1] 4  # problem: missing-equal@1
print a[1]
