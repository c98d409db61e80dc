print rand(0)                      # expect: 0
print instr(str(rand(100)), ".")   # expect: -1
print rand(0.99) - rand(0.5)       # expect: 0.000000
