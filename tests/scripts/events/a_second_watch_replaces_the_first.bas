x = 1
event create changed h
watch create x changed
event create moved other
watch create x moved
x = 2  # expect: other 2.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
