x = 1
event create changed h
watch create x changed
y = x
y = 2
x = 3  # expect: h 3.000000
y = x
y = 4
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
