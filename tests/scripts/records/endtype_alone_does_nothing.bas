endtype
print "behind"  # expect: behind
