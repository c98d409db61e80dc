dim a[3]
x = a[1  # problem: index-brackets@6
