# The name that was not found starts the next statement.
x = nope            # expect error 3: No expression present
print x             # expect:
