event create onstop h
throw onstop("by hand")  # expect: h by hand
event remove onstop h
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
