print repeat("ab", 3)              # expect: ababab
print repeat("ab", 2.9)            # expect: abab
print repeat("ab", 1)              # expect: ab
print "["; repeat("ab", 0); "]"    # expect: []
print "["; repeat("ab", -1); "]"   # expect: []
print "["; repeat("", 1000); "]"   # expect: []
print len(repeat("abc", 10000))    # expect: 30000
