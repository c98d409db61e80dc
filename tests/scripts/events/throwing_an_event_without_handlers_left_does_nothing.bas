event create alarm h
event remove alarm h
throw alarm("x")
print "behind"  # expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
