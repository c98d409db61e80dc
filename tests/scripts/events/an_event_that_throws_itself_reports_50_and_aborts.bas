event create alarm again
event create onstop h
throw alarm(1)
print "not met"
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub again(v)
  throw alarm(v)
endsub
# expect error 50 anywhere: Brindle unrecoverable error
