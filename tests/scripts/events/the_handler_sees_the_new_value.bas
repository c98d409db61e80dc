global g
g = 1
event create changed display
watch create g changed
g = 5  # expect: 5.000000 5.000000
end
sub display(v)
  print v; " "; g
endsub
