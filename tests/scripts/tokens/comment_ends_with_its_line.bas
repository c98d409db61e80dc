# print "a"
print "b"           # expect: b
print "c" # print "d"
# expect: c
