open "data" as 1 text
print "["; readline(1); "]"   # expect: [a]
print "["; readline(1); "]"   # expect: [c]
print "["; readline(1); "]"   # expect: []
print "["; readline(1); "]"   # expect: [e]
print "["; readline(1); "]"   # expect: []
