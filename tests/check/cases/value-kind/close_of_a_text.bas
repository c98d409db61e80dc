close "f"  # problem: value-kind@1
