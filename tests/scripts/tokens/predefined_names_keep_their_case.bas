print True          # expect: 1
print False         # expect: 0
print Nothing       # expect:
print true          # expect:
