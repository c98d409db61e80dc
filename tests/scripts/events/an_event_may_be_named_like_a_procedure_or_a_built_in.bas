event create h h
event create len other
throw h("x")    # expect: h x
throw len("y")  # expect: other y
print len("y")  # expect: 1
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
