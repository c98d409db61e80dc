x = 1
event create changed h
watch create x changed
x = 5       # expect: h 5.000000
x = "text"  # expect: h text
x = int(7)  # expect: h 7
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
