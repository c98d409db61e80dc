x = (2)# a comment
print x             # expect: 2.000000
