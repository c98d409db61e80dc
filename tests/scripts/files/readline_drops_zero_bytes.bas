open "data" as 1 text
print "["; readline(1); "]"   # expect: [ab]
print "["; readline(1); "]"   # expect: [c]
print "["; readline(1); "]"   # expect: [d]
