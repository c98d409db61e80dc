x = f()  # problem: no-result@5
end
sub f()
  print "in"
endsub
