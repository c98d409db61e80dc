event create alarm first
event create notice h
throw alarm("x")
# expect: first
# expect: h x!
# expect: first done
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub first(v)
  print "first"
  throw notice(v + "!")
  print "first done"
endsub
