global g
g = 1
event create changed h
watch create g changed
call work()  # expect: h 2.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub work()
  g = 2
endsub
