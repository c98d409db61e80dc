print left(12345, 2)           # expect: 12
print right(2.5, 3)            # expect: 000
print mid(int(12345), 1, 3)    # expect: 234
print left("abcdef", "3")      # expect: abc
print instr(2.5, ".")          # expect: 1
print replace(2.5, "0", "x")   # expect: 2.5xxxxx
print repeat(int(7), 3)        # expect: 777
print ucase(1.5)               # expect: 1.500000
