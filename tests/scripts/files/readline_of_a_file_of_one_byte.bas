open "data" as 1 text
print "["; readline(1); "]"   # expect: [x]
print "["; readline(1); "]"   # expect: []
