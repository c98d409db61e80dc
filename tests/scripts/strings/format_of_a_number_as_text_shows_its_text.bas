print format(5, "%s")         # expect: 5.000000
print format(int(5), "%s")    # expect: 5
print format(2.5, "[%12s]")   # expect: [    2.500000]
