dim x = 5  # problem: declaration-value@7
