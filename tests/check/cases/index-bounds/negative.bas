dim a[3]
a[-1] = 6  # problem: index-bounds@1
