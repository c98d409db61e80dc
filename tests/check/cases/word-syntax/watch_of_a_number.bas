watch create 5 "changed"  # problem: word-syntax@14
