event create alarm removes
event create alarm h
throw alarm("x")  # expect: removes
throw alarm("y")  # expect: removes
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub removes(v)
  print "removes"
  event remove alarm h
endsub
