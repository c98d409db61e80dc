event create alarm h
event create notice h
throw alarm("x")   # expect: h x
throw notice("y")  # expect: h y
event remove alarm h
throw alarm("x")
throw notice("z")  # expect: h z
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
