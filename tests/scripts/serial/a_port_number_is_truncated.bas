print comportopen(9999.9)     # expect: True
print comportclose("9999 x")  # expect: True
