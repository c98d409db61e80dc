event create alarm display
dim unset
throw alarm(unset)  # expect: 0[]
end
sub display(v)
  print ubound("v"); "["; v; "]"
endsub
