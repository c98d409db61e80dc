open "data" as 1 text
print "["; readline(1); "]"   # expect: [ÿ]
