true = 5
print true
