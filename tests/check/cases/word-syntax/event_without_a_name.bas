event create (  # problem: word-syntax@14
