print len("a", "b")  # problem: built-in-surplus@7
