print getpath("a\b\c.txt")      # expect: a\b\
print getpath("C:\x")           # expect: C:\
print getpath("a\b\")           # expect: a\b\
print getpath("a\b", "extra")   # expect: a\
print getpath("\a\b")           # expect: \a\
