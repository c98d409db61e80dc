# The line end was read as the operand; the next line is a statement of its own.
# expect error 0 at "\n1": Error loading resource string.
# expect error 18 at "\n1": Unexpected operator
x =
1
