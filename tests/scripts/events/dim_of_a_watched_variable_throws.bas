x = 1
event create changed h
watch create x changed
dim x      # expect: h 1.000000
dim x[2]     # expect: h 1.000000
dim x as string
# expect: h 
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
