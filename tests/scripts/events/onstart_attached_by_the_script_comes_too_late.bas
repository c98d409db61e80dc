event create OnStart h
print "running"  # expect: running
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
