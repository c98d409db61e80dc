# "y:" is one label token, so the assignment finds no operand.
y = 7
x = y: print "on"   # expect: on
# expect error 0: Error loading resource string.
