s = "a"
print s + 1         # expect: a1.000000
print s + int(1)    # expect: a1
print s + True      # expect: a1
