x = 1
event create "has changed!" h
watch create x "HAS changed!"
x = 2  # expect: h 2.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
