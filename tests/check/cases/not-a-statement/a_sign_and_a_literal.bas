a = 1
) "b"  # problem: not-a-statement@1
