dim a[3]
a[0] = 5
a[2] = 7
print a             # expect: 7.000000
print a + 1         # expect: 8.000000
print a[0]          # expect: 5.000000
print a             # expect: 5.000000
