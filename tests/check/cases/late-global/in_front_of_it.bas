global x
x = 1
global y
y = 2
print x; y
