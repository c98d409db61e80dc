event create onstop h
# answer: cancel
next  # expect error 55: Illegal NEXT statement.
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
