5  # problem: not-a-statement@1
