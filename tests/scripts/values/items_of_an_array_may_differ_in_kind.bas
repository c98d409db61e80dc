dim a[4]
a[0] = 1.5
a[1] = "text"
a[2] = int(7)
print a[0]; " "; a[1]; " "; a[2]; " ["; a[3]; "]"   # expect: 1.500000 text 7 []
