print format(5.7, "%d")       # expect: 5
print format(-5.7, "%d")      # expect: -5
print format(5.7, "%i")       # expect: 5
print format(42, "[%5d]")     # expect: [   42]
print format(42, "[%-5d]")    # expect: [42   ]
print format(42, "%05d")      # expect: 00042
print format(42, "%+d")       # expect: +42
print format(42, "[% d]")     # expect: [ 42]
print format(42, "%.4d")      # expect: 0042
print format(255.9, "%x")     # expect: ff
print format(255.9, "%X")     # expect: FF
print format(255, "%#x")      # expect: 0xff
print format(8, "%o")         # expect: 10
print format(42, "%u")        # expect: 42
print format(int(42), "%d")   # expect: 42
