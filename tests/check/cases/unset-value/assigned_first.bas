dim n as double
n = 0
n = n + 1
print n
