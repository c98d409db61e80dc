event create alarm adds
throw alarm("x")
# expect: adds
# expect: h x
throw alarm("y")
# expect: adds
# expect: h y
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub adds(v)
  print "adds"
  event create alarm h
endsub
