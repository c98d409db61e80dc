a = "5"
print a - 1  # problem: text-arithmetic@9
