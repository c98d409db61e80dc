# Deliberate: the literal is an item of its own, an expression goes in parentheses.
print ("a" + "b")   # expect: ab
print "a" + "b"     # expect: a
# expect error 18: Unexpected operator
