dim a[3]
x = 5
dim y
global Big[7]
print ubound("a")      # expect: 3
print ubound("A")      # expect: 3
print ubound("x")      # expect: 1
print ubound("y")      # expect: 0
print ubound("nope")   # expect: 0
print ubound("Big")    # expect: 7
print ubound("big")    # expect: 0
print ubound("")       # expect: 0
print ubound(5)        # expect: 0
