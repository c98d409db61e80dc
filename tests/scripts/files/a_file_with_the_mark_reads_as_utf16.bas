open "data" as 1 text
print "["; readline(1); "]"   # expect: [first ä€😀]
print "["; readline(1); "]"   # expect: [second]
print "["; readline(1); "]"   # expect: [third]
print "["; readline(1); "]"   # expect: []
