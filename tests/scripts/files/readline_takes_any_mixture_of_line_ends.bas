open "data" as 1 text
print "["; readline(1); "]"   # expect: [unix]
print "["; readline(1); "]"   # expect: [windows]
print "["; readline(1); "]"   # expect: []
print "["; readline(1); "]"   # expect: [empty above]
print "["; readline(1); "]"   # expect: []
print "["; readline(1); "]"   # expect: [last]
print "["; readline(1); "]"   # expect: []
print iseof(1)                # expect: True
