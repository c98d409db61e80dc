open "data" as 1 text
print "["; readline(1); "]"   # expect: [one]
print "["; readline(1); "]"   # expect: [two]
print "["; readline(1); "]"   # expect: []
