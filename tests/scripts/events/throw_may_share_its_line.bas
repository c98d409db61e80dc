event create alarm h : throw alarm("x") : throw alarm("y") print "behind"
# expect: h x
# expect: h y
# expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
