event create ontimer h
timerstart 1
print "behind"  # expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
