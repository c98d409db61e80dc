x = int(7.9)
y = x
print y             # expect: 7
print (y)           # expect: 7
