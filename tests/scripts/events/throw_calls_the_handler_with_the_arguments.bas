event create alarm h
throw alarm(1, "two", 2 + 1)  # expect: 1.000000 two 3.000000
end
sub h(a, b, c)
  print a; " "; b; " "; c
endsub
