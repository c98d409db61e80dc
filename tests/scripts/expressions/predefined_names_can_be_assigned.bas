True = 5
if 1 = True then print "a" else print "b" endif  # expect: b
print True          # expect: 5.000000
False = "no"
print False         # expect: no
