print "["; true; "]"      # expect: []
print "["; FALSE; "]"     # expect: []
print "["; nothing; "]"   # expect: []
