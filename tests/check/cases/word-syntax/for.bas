for 1 to 3  # problem: word-syntax@1
next
