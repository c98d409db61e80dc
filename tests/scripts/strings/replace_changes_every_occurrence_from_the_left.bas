print replace("abcabc", "b", "XY")       # expect: aXYcaXYc
print replace("aaa", "aa", "b")          # expect: ba
print replace("aaaa", "aa", "a")         # expect: aa
print replace("abc", "z", "y")           # expect: abc
print replace("abc", "b", "")            # expect: ac
print replace("aXa", "x", "y")           # expect: aXa
print "["; replace("aa", "a", ""); "]"   # expect: []
print replace("ab", "b", "bb")           # expect: abb
