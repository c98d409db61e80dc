dim 5  # problem: word-syntax@5
