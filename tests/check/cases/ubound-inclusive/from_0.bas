dim a[3]
for i = 0 to ubound("a")  # problem: ubound-inclusive@14
  a[i] = i
next
# runs: error
