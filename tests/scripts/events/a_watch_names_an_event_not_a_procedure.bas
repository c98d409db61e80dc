x = 1
watch create x h
x = 2
event create h other
x = 3  # expect: other 3.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
