event create boom first
event create boom other
throw boom(1)      # expect: first
# expect: other
throw boom(1)      # expect: other
end
sub first(v)
  print "first"
  event remove boom first
endsub
sub other(v)
  print "other"
endsub
