event clear alarm h  # expect error 40: Unsupported keyword
throw alarm("x")
event create alarm h
event title alarm h  # expect error 40: Unsupported keyword
throw alarm("y")     # expect: h y
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
