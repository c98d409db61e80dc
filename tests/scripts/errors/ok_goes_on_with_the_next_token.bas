# answer: ok
next print "same line"  # expect: same line
# expect error 55: Illegal NEXT statement.
print "next line"   # expect: next line
