# answer: cancel
x = )               # expect error 0: Error loading resource string.
print "never"
