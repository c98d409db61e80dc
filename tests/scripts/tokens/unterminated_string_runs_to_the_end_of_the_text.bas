# The literal takes in the line break that loading appends.
# expect: a
# expect:
print "a