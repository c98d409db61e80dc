print left("abc", 1, 2)  # problem: built-in-arguments@7
