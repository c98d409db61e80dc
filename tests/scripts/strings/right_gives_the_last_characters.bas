print right("abcdef", 2)              # expect: ef
print right("abcdef", 2.9)            # expect: ef
print right("abcdef", 6)              # expect: abcdef
print right("abcdef", 7)              # expect: abcdef
print right("abcdef", 1e30)           # expect: abcdef
print "["; right("abcdef", 0); "]"    # expect: []
print "["; right("abcdef", -1); "]"   # expect: []
print "["; right("", 3); "]"          # expect: []
