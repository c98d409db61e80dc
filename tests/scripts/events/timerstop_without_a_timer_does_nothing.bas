timerstop
timerstop
print "behind"  # expect: behind
