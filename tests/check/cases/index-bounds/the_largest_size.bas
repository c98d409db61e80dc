dim a[16000]
a[15999] = 1
print a[15999]
