x = 1
event create changed h
watch create x changed
x = 2  # expect: h 2.000000
watch remove x
x = 3
watch remove x
watch create x "changed"
x = 4  # expect: h 4.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
