dim a[3]
a[2] = "kept"
dim a[16001]        # expect error 32: Incorrect array size
print ubound("a")   # expect: 3
print a[2]          # expect: kept
