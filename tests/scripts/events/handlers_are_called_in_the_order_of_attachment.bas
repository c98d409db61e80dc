event create alarm other
event create alarm h
throw alarm("x")
# expect: other x
# expect: h x
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
