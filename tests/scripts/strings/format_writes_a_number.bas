print format(3.14159, "%.2f")            # expect: 3.14
print format(3.14159, "%f")              # expect: 3.141590
print format(2.5, "%.0f")                # expect: 2
print format(3.5, "%.0f")                # expect: 4
print format(2.5, "[%10.3f]")            # expect: [     2.500]
print format(2.5, "[%-10.3f]")           # expect: [2.500     ]
print format(2.5, "%+.1f")               # expect: +2.5
print format(2.5, "%010.2f")             # expect: 0000002.50
print format(12345.678, "%e")            # expect: 1.234568e+04
print format(12345.678, "%.3E")          # expect: 1.235E+04
print format(12345.678, "%g")            # expect: 12345.7
print format(0.00001234, "%g")           # expect: 1.234e-05
print format(1e20, "%G")                 # expect: 1E+20
print format(2.5, "before %.1f after")   # expect: before 2.5 after
print format(-2.5, "[% .1f]")            # expect: [-2.5]
print format(5, "%#.0f")                 # expect: 5.
