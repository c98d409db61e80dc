event create boom first
event create boom second
throw boom(1)      # expect: first
# expect: second
throw boom(1)      # expect: second
end
sub first(v)
  print "first"
  event remove boom first
endsub
sub second(v)
  print "second"
endsub
