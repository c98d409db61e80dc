dim a[0]  # problem: index-bounds@6
