x = 1
event create changed h
watch create x changed
x = 1  # expect: h 1.000000
x = 1  # expect: h 1.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
