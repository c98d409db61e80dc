for i = 1 to nope  # problem: unset-read@14
  print i
next
print "behind"
