x = 1
print "a
print x
# problem on line 2: literal-over-lines@7
