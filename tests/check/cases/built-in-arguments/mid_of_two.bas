print mid("abc", 1)  # problem: built-in-arguments@7
