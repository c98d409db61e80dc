event create "text" h
throw text("x")  # expect: h x
event create text h  # expect error 1: Syntax error
# expect error 3 anywhere: No expression present
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
