event create onstop h
stayresident
print "running"  # expect: running
# expect: h onstop_comes_before_a_resident_program_waits.bas
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
