x = 1
event create changed h
watch create x changed
dim a[2]
a[0] = "p"
a[1] = "q"
x = a  # expect: h q
print ubound("x")  # expect: 2
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
