open 5 for input as 1  # problem: value-kind@1
