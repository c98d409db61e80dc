dim a[4]
dim b[4]
for i = 0 to 3
  a[i] = 3 - i
  b[i] = i * 10
next
print b[a[1]]          # expect: 20.000000
print b[(1 + 1) * 1]   # expect: 20.000000
print b[len("abc")]    # expect: 30.000000
print b["2"]           # expect: 20.000000
