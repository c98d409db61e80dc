call both(1)
print "on"
end
sub both(a, b)   # expect error 24: Incorrect number of function parameters
  print "not reached"
endsub
