dim a[3]
a[0] = "first"
a[2] = "third"
dim a[16000]
print ubound("a")   # expect: 3
print a             # expect: first
