dim a[4]
a[3] = 7
i = 1
print a[i * 2 + 1]  # expect: 7.000000
a[1] = 3
print a[a[1]]       # expect: 7.000000
