print format(65, "%c")        # expect: A
print format(228, "%c")       # expect: ä
print format(8364, "%c")      # expect: €
print format(65.9, "[%c]")    # expect: [A]
x = "a" + format(34, "%c")
print x                       # expect: a"
print len(format(10, "%c"))   # expect: 1
