global g
g = 0
event create changed again
event create onstop h
watch create g changed
g = 1
print "not met"
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub again(v)
  g = v + 1
endsub
# expect error 50 anywhere: Brindle unrecoverable error
