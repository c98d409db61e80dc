print left("abcdef", 2)              # expect: ab
print left("abcdef", 2.9)            # expect: ab
print left("abcdef", 6)              # expect: abcdef
print left("abcdef", 7)              # expect: abcdef
print left("abcdef", 1e30)           # expect: abcdef
print "["; left("abcdef", 0); "]"    # expect: []
print "["; left("abcdef", -1); "]"   # expect: []
print "["; left("", 3); "]"          # expect: []
