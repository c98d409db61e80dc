dim a[3]
a[2.9] = "third"
a[-0.5] = "first"
print a[2]       # expect: third
print a[0]       # expect: first
print a[2.99]    # expect: third
print a[-0.99]   # expect: first
