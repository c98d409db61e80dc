dim n as double
n = n + 1  # problem: unset-value@5
