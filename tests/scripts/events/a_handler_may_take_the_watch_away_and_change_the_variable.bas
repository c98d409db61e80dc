global g
g = 0
event create changed limit
watch create g changed
g = 50   # expect: limited
print g  # expect: 10.000000
g = 5
print g  # expect: 5.000000
end
sub limit(v)
  if v > 10 then
    print "limited"
    watch remove g
    g = 10
  endif
endsub
