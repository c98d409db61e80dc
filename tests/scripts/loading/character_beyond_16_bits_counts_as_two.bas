print len("😀")     # expect: 2
print "😀"          # expect: 😀
