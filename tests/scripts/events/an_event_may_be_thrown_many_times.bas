event create alarm h
for i = 1 to 3
  throw alarm(int(i))
next
# expect: h 1
# expect: h 2
# expect: h 3
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
