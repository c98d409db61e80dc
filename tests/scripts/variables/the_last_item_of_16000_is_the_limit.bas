dim a[16000]
a[15999] = "last"
print a[15999]        # expect: last
a[16000] = "beyond"   # expect error 36: Array index is out of bounds
