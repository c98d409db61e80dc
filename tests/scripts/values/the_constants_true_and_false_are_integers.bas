print True                # expect: 1
print False               # expect: 0
print True + True         # expect: 2.000000
print "["; Nothing; "]"   # expect: []
