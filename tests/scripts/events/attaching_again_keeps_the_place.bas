event create alarm h
event create alarm other
event create alarm h
throw alarm("x")
# expect: h x
# expect: other x
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
