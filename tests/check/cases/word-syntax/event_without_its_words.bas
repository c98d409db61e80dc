event create  # problem: word-syntax@13
y = 2
print y + 1
