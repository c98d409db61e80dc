open "data" as 1 text
print "["; readline(1); "]"   # expect: []
print "["; readline(1); "]"   # expect: []
x = readline(1)
print len(x)                  # expect: 0
