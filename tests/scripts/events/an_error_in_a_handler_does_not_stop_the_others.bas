event create alarm bad
event create alarm h
throw alarm("x")
# expect: bad goes on
# expect: h x
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub bad(v)
  next  # expect error 55: Illegal NEXT statement.
  print "bad goes on"
endsub
