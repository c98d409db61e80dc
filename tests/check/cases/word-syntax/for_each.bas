for x in list  # problem: word-syntax@5
next
