print format(1.5, "[%.1f|%.1f|%d]")   # expect: [1.5||]
print format("a", "[%s%s]")           # expect: [a]
print format(1, "[%d %s]")            # expect: [1 ]
