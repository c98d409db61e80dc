dim a[3]
a[0] = 5
a[1] = 6
print a[3]          # expect: 6.000000
print a[-1]         # expect: 6.000000
print a[0]          # expect: 5.000000
print a[3]          # expect: 5.000000
