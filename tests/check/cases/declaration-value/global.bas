global x = 5  # problem: declaration-value@10
