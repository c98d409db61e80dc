open "data" as 1 text
print "["; readline(1); "]"   # expect: [aéb]
print "["; readline(1); "]"   # expect: [€]
print "["; readline(1); "]"   # expect: [ÿú]
print "["; readline(1); "]"   # expect: [Ã(]
print "["; readline(1); "]"   # expect: [â‚x]
print "["; readline(1); "]"   # expect: [endÃ]
