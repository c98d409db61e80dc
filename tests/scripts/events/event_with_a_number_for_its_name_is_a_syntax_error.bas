event create 5  # expect error 1: Syntax error
event create h(  # expect error 1: Syntax error
print "behind"  # expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
