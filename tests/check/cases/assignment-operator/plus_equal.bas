x = 1
x += 1  # problem: assignment-operator@3
print x
