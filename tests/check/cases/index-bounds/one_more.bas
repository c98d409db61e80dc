dim a[16001]  # problem: index-bounds@6
