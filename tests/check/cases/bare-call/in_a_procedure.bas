call g()
end
sub g()
  f(1)  # problem: bare-call@3
endsub
sub f(a)
  print a
endsub
