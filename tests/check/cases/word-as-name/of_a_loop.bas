for value = 1 to 3  # problem: word-as-name@5
next
