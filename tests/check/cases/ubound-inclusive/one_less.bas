dim a[3]
for i = 0 to ubound("a") - 1
  a[i] = i
next
