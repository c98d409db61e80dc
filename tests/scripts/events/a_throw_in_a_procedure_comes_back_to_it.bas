event create alarm h
call work("a")
# expect: h a
# expect: local a
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub work(v)
  mine = v
  throw alarm(v)
  print "local "; mine
endsub
