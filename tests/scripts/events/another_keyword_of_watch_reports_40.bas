x = 1
event create changed h
watch clear x  # expect error 40: Unsupported keyword
watch show x   # expect error 40: Unsupported keyword
x = 2
watch create x changed
watch clear x  # expect error 40: Unsupported keyword
x = 3          # expect: h 3.000000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
