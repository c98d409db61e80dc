event create alarm last
event create alarm h
event create onstop other
throw alarm("x")
# expect: last
# expect: h x
print "not met"
# expect: other end_in_a_handler_ends_the_run_behind_the_statement.bas
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
sub last(v)
  print "last"
  end
  print "not met"
endsub
