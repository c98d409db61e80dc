x = 1
global x  # problem: late-global@8
print x
