event create ontimer h
stayresident
timerstart 100000
print "behind"  # expect: behind
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
