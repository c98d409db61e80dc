dim a[2.9]
print ubound("a")   # expect: 2
dim b[16000.9]
print ubound("b")   # expect: 16000
