event create alarm h
throw alarm("x", "y", "z")  # expect: h x
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
