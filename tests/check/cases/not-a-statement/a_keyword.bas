input x  # problem: not-a-statement@1
