x = 1
watch x  # problem: word-syntax@7
watch create x  # problem: word-syntax@1
y = 2
print x + y
