# No machine has so many ports.
print comportopen(9999, 9600, 2, 1, 3)    # expect: True
print comportclose(9999)                  # expect: True
print comportclose(9999)                  # expect: False
