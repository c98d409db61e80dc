x = 1
event create changed h
watch create x changed
y = 1
watch create y changed
x = 2  # expect: h 2.000000
y = 3  # expect: h 3.000000
watch remove x
x = 4
y = 5  # expect: h 5.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
