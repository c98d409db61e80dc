dim a[3]
a[0] = "first"
a[2] = "third"
print a   # expect: third
