x = nope            # expect error 3: No expression present
print "["; x; "]"   # expect: []
