open "data" as 1 text
print "["; readline(1); "]"   # expect: []
print iseof(1)                # expect: True
print int(filesize(1))        # expect: 2
