event create onstop h
5  # expect error 18: Unexpected operator
# expect: h a_run_ended_by_error_18_throws_onstop.bas
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
