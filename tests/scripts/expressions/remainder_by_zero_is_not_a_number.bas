print 7 % 0         # expect: nan
print isnan(7 % 0)  # expect: 1
