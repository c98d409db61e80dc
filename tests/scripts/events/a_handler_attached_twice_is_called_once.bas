event create alarm h
event create alarm h
event create ALARM "H"
throw alarm("x")  # expect: h x
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
