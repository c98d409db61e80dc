print "a"           # expect: a
x = )               # expect error 0: Error loading resource string.
print "b"           # expect: b
