dim a[1]
dim b[16000]
b[15999] = "last"
print ubound("b")   # expect: 16000
print b[15999]      # expect: last
a = 1
print ubound("a")   # expect: 1
