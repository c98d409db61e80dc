dim a[3]
print "["; a[0]; a[1]; a[2]; "]"   # expect: []
x = a[1] + 1                       # expect error 18: Unexpected operator
