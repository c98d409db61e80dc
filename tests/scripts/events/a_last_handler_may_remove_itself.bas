event create alarm h
event create alarm once
throw alarm("x")
# expect: h x
# expect: once x
throw alarm("y")  # expect: h y
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub once(v)
  print "once "; v
  event remove alarm once
endsub
