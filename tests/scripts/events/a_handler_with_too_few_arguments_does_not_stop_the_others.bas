event create alarm two
event create alarm h
throw alarm("x")
# expect: h x
print "behind"  # expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub two(a, b)  # expect error 24: Incorrect number of function parameters
  print "not met"
endsub
