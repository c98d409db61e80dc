call f()
end
sub f()  # problem: missing-endfunction@5
  print "in"
