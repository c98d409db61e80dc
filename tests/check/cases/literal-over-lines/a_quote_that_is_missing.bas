x = "a
print "b"
# problem on line 1: literal-over-lines@5
# problem on line 2: missing-equal@8
