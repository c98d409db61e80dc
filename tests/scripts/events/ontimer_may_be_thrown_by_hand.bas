event create ontimer h
throw OnTimer("by hand")  # expect: h by hand
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
