dim a[3]
event create changed display
watch create a changed
a[1] = "b"  # expect: b 3b
a[2] = "c"  # expect: c 3b
end
sub display(v)
  print v; " "; ubound("v"); v[1]
endsub
