print getname("a\b\c.txt")      # expect: c.txt
print getname("\file")          # expect: file
print getname("C:\x")           # expect: x
print getname("a\b", "extra")   # expect: b
