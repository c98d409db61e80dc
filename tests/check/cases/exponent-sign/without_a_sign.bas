print 1e3
print 1.5e3
