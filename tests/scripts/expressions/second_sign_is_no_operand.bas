# Only one sign may stand before an operand; the second one is a binary minus.
x = - -2            # expect error 0: Error loading resource string.
print x             # expect: -2.000000
