print mid("abcdef", -2, 3)      # expect: abc
print mid("abcdef", -1e30, 3)   # expect: abc
