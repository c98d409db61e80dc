dim a[2]
a[0] = 10
a[1] = 20
x = a[1]
print a + 1             # expect: 21.000000
y = 1 + a
print y                 # expect: 21.000000
print ubound("y")       # expect: 1
print a[0]; " "; a[1]   # expect: 10.000000 20.000000
