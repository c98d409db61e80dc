throw nothing(1)
throw nothing()
print "behind"  # expect: behind
