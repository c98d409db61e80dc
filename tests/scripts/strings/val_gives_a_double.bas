print val("12")       # expect: 12.000000
print val(int(12))    # expect: 12.000000
print val(2.5)        # expect: 2.500000
print val("12.5kg")   # expect: 12.500000
