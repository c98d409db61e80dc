print len("12345")      # expect: 5
print len("")           # expect: 0
print len("äöü€")       # expect: 4
print len(" a ")        # expect: 3
print len(str(12345))   # expect: 12
