print Sin(0)        # expect: 0.000000
print LEFT("abc", 2)  # expect: ab
