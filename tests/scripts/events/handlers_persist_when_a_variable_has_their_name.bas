h = 5
event create alarm h
throw alarm("x")  # expect: h x
print int(h)      # expect: 5
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
