dim a b  # problem: word-syntax@7
