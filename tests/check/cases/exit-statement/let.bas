let x = 5  # problem: exit-statement@1
