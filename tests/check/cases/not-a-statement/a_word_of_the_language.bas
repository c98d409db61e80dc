window  # problem: not-a-statement@1
