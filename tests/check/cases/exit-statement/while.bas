x = 1
while x < 3  # problem: not-a-statement@1
