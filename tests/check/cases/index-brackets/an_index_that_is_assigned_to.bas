dim a[3]
a[nope] = 1  # problem: undefined-variable@3
a[1 = 2  # problem: index-brackets@2
