event create alarm bad
event create alarm h
event create onstop h
throw alarm("x")
print "not met"
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub bad(v)
  # answer: cancel
  next  # expect error 55: Illegal NEXT statement.
endsub
