f(1)  # problem: bare-call@1
end
sub f(a)
  print a
endsub
