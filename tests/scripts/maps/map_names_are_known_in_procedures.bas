map create "m"
call Store()
print mapget("m", "k")  # expect: 5.000000
print maphas("n", "k")  # expect: True
end
sub Store()
  call mapset("m", "k", 5)
  map create "n"
  call mapset("n", "k", 6)
endsub
