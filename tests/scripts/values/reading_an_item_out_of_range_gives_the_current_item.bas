dim a[3]
a[0] = "first"
a[1] = "second"
a[2] = "third"
x = a[1]
print a[3]       # expect: second
print a[-1]      # expect: second
print a[99999]   # expect: second
print a[2]       # expect: third
print a[3]       # expect: third
