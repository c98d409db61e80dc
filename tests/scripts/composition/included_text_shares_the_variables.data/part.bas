x = x + 1
