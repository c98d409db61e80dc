# The literal starts on one line, the position is on the other one.
x = "first
second" + )         # expect error 0: Error loading resource string.
print x
# expect: first
# expect: second
