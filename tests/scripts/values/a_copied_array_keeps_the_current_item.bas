dim a[3]
a[0] = "first"
a[1] = "second"
a[2] = "third"
x = a[1]
b = a
print b   # expect: second
