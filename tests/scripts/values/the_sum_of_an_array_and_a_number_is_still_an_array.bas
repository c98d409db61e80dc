dim a[2]
a[0] = 10
a[1] = 20
x = a[1]
y = a + 1
print ubound("y")       # expect: 2
print y[0]; " "; y[1]   # expect: 10.000000 21.000000
