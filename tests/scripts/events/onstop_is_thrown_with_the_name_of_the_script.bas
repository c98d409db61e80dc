event create onstop h
print "running"
# expect: running
# expect: h onstop_is_thrown_with_the_name_of_the_script.bas
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
