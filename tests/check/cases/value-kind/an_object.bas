x = 5
print x.name  # problem: value-kind@7
print x.get(1)  # problem: value-kind@7
