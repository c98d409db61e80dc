a[3] = 1  # problem: undefined-array@1
