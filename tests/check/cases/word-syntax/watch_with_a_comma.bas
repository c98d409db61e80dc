x = 1
watch create x, "changed"  # problem: word-syntax@15
