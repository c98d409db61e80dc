event add "a" "b"  # problem: word-syntax@7
