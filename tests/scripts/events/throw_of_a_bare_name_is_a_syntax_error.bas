event create alarm h
throw alarm  # expect error 1: Syntax error
throw "alarm"  # expect error 1: Syntax error
print "behind"  # expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
