text = "x"  # problem: word-as-name@1
