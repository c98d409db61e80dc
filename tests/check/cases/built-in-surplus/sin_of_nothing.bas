print sin()  # problem: built-in-surplus@7
