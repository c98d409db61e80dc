map create "m"
x = 1
event create changed h
watch create x changed
call mapset("m", "k", x)
call mapset("m", "k", 5)
y = mapget("m", "k")
y = 6
x = 2  # expect: 2.000000
end
sub h(v)
  print v
endsub
