s = "5"
print -s            # expect: -5.000000
print -"2.5x"       # expect: -2.500000
