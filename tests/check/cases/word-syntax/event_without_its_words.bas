event create  # problem: word-syntax@15
y = 2
print y + 1
