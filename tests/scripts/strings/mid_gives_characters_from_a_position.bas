print mid("abcdef", 1, 3)              # expect: bcd
print mid("abcdef", 0, 1)              # expect: a
print mid("abcdef", 1.9, 3.9)          # expect: bcd
print mid("abcdef", 4, 10)             # expect: ef
print mid("abcdef", 5, 1)              # expect: f
print "["; mid("abcdef", 6, 1); "]"    # expect: []
print "["; mid("abcdef", 99, 1); "]"   # expect: []
print "["; mid("abcdef", 2, 0); "]"    # expect: []
print "["; mid("abcdef", 2, -1); "]"   # expect: []
print mid("abcdef", 0, 1e30)           # expect: abcdef
