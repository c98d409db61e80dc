print len("😀")     # expect: 2
print len("a😀b")   # expect: 4
