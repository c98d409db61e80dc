x = "grad ° – €"
print x        # expect: grad ° – €
print len(x)   # expect: 10
