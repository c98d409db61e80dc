event create  # problem: word-syntax@1
y = 2
print y + 1
