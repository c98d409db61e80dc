print int(2147483647.9)    # expect: 2147483647
print int(2147483648)      # expect: 2147483647
print int(1e30)            # expect: 2147483647
print int(1 / 0)           # expect: 2147483647
print int(-2147483648.9)   # expect: -2147483648
print int(-2147483649)     # expect: -2147483648
print int(-1 / 0)          # expect: -2147483648
print int(0 / 0)           # expect: 0
