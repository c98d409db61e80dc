event create alarm display
dim a[3]
a[0] = "p"
a[1] = "q"
a[2] = "r"
throw alarm(a)  # expect: 3pr
end
sub display(v)
  print ubound("v"); v[0]; v[2]
endsub
