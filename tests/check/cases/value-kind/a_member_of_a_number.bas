n = 5
print n.size  # problem: value-kind@7
