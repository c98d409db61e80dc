x = 1
call work()
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub work()
  watch create x changed  # expect error 37: Undefined variable
endsub
