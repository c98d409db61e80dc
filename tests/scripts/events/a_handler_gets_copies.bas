event create alarm change
event create alarm h
x = 1
throw alarm(x)  # expect: h 1.000000
print x         # expect: 1.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub change(v)
  v = 2
  x = 3
endsub
