print int(2.7)             # expect: 2
print int(-2.7)            # expect: -2
print int(0.999999)        # expect: 0
print int(-0.999999)       # expect: 0
print int(1999999999.5)    # expect: 1999999999
print int(-1999999999.5)   # expect: -1999999999
print int("12abc")         # expect: 12
print int("-3.9")          # expect: -3
