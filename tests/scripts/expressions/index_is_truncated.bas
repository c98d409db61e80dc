dim a[3]
a[0] = 5
a[2] = 7
print a[2.9]        # expect: 7.000000
print a[-0.5]       # expect: 5.000000
