x = 1
watch create x changed
x = 2
event create changed h
x = 3  # expect: h 3.000000
event remove changed h
x = 4
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
