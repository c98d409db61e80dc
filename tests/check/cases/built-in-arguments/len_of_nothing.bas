print len()  # problem: built-in-arguments@7
