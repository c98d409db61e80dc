a = 5
a[1] = 6  # problem: index-bounds@1
