x = 1
x++  # problem: assignment-operator@2
